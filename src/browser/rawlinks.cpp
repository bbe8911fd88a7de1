// SPDX-License-Identifier: MIT
#include "browser/rawlinks.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

#include <vector>

namespace RawLinks {

namespace {

const QString Scheme = QStringLiteral("raw");

struct Link {
    int position;
    int length;
    QString href;
};

} // namespace

QSet<QString> protect(QTextDocument& document)
{
    QSet<QString> anchors;
    std::vector<Link> links;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextCharFormat format = fragment.charFormat();
            for (const auto& name : format.anchorNames()) {
                anchors.insert(name);
            }
            // isAnchor() is false for the rest of a link that an anchor name splits.
            if (!format.anchorHref().isEmpty()) {
                links.push_back({fragment.position(), fragment.length(), format.anchorHref()});
            }
        }
    }
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (const auto& link : links) {
        QTextCharFormat format;
        format.setAnchorHref(Scheme + u':' + QString::fromLatin1(link.href.toUtf8().toHex()));
        cursor.setPosition(link.position);
        cursor.setPosition(link.position + link.length, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(format);
    }
    cursor.endEditBlock();
    return anchors;
}

QString target(const QUrl& url)
{
    return url.scheme() == Scheme ? QString::fromUtf8(QByteArray::fromHex(url.path().toLatin1())) : QString();
}

} // namespace RawLinks
