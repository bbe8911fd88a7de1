// SPDX-License-Identifier: MIT
#include "browser/imagewindow.h"

#include <QFile>
#include <QFileInfo>
#include <QGridLayout>
#include <QImageReader>
#include <QLabel>
#include <QPixmap>
#include <QScrollArea>

namespace {

constexpr QSize LargestInitialSize(400, 300);

/// The image reader takes any file that begins as XML for a possible SVG picture, XHTML pages as well.
bool hasSvgRoot(const QString& fileName)
{
    constexpr qint64 headSize = 4096;
    QFile file(fileName);
    const QByteArray head = file.open(QIODevice::ReadOnly) ? file.read(headSize).toLower() : QByteArray();
    const qsizetype svg = head.indexOf("<svg");
    const qsizetype html = head.indexOf("<html");
    return svg >= 0 && (html < 0 || svg < html);
}

} // namespace

bool isPicture(const QString& fileName)
{
    if (fileName.isEmpty() || !QFileInfo(fileName).isFile()) {
        return false;
    }
    const QByteArray format = QImageReader::imageFormat(fileName);
    return format == "svg" ? hasSvgRoot(fileName) : !format.isEmpty();
}

ImageWindow::ImageWindow(const QString& fileName)
    : QDialog(nullptr, Qt::Dialog | Qt::WindowMaximizeButtonHint)
{
    setModal(true);
    setWindowTitle(QString(fileName).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));

    const QPixmap picture(fileName.trimmed());
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
