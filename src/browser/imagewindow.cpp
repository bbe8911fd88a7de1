// SPDX-License-Identifier: MIT
#include "browser/imagewindow.h"

#include "browser/picturefile.h"

#include <QGridLayout>
#include <QLabel>
#include <QPixmap>
#include <QScrollArea>

namespace {

constexpr QSize LargestInitialSize(400, 300);

} // namespace

ImageWindow::ImageWindow(const QString& fileName)
    : QDialog(nullptr, Qt::Dialog | Qt::WindowMaximizeButtonHint), m_fileName(fileName)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(true);
    setWindowTitle(QString(fileName).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));

    const PictureFile file(fileName.trimmed());
    const auto picture = QPixmap::fromImage(file.read(file.size()));
    auto* label = new QLabel;
    if (picture.isNull()) {
        label->setText(tr("The picture cannot be shown: it is damaged or too large."));
        label->setMargin(12);
    } else {
        label->setPixmap(picture);
        label->setFixedSize(picture.size());
    }
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(label);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(area);

    const bool isLarge =
        picture.width() > LargestInitialSize.width() || picture.height() > LargestInitialSize.height();
    resize(isLarge ? LargestInitialSize : label->sizeHint().expandedTo(label->size()));
}
