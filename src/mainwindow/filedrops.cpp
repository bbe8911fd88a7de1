// SPDX-License-Identifier: MIT
#include "mainwindow/filedrops.h"

#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTextEdit>
#include <QUrl>

FileDrops::FileDrops(QWidget& window) : QObject(&window)
{
    window.setAcceptDrops(true);
    window.installEventFilter(this);
    for (auto* edit : window.findChildren<QLineEdit*>()) {
        edit->installEventFilter(this);
    }
    for (auto* page : window.findChildren<QTextEdit*>()) {
        page->viewport()->installEventFilter(this);
    }
}

bool FileDrops::eventFilter(QObject* watched, QEvent* event)
{
    const auto type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) {
        return QObject::eventFilter(watched, event);
    }
    auto* drop = static_cast<QDropEvent*>(event);
    const QStringList files = filesIn(*drop->mimeData());
    if (files.isEmpty()) {
        return QObject::eventFilter(watched, event);
    }
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (type == QEvent::Drop) {
        Q_EMIT dropped(files);
    }
    return true;
}

QStringList FileDrops::filesIn(const QMimeData& data)
{
    QStringList files;
    for (const auto& url : data.urls()) {
        if (url.isLocalFile()) {
            files += url.toLocalFile();
        }
    }
    return files;
}
