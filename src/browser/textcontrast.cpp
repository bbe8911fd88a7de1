// SPDX-License-Identifier: MIT
#include "browser/textcontrast.h"

#include "browser/pagestyle.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>
#include <vector>

namespace {

constexpr double LeastContrast = 4.5;

struct Change {
    int position;
    int length;
    QColor color;
};

bool hasGrounds(const QTextDocument& document)
{
    const auto formats = document.allFormats();
    return std::any_of(formats.begin(), formats.end(), [](const QTextFormat& format) {
        return format.hasProperty(QTextFormat::BackgroundBrush);
    });
}

QColor frameGround(const QTextBlock& block, const QColor& base)
{
    for (auto* frame = QTextCursor(block).currentFrame(); frame != nullptr; frame = frame->parentFrame()) {
        if (auto* table = qobject_cast<QTextTable*>(frame)) {
            const auto cell = table->cellAt(block.position());
            if (cell.isValid() && cell.format().hasProperty(QTextFormat::BackgroundBrush)) {
                return cell.format().background().color();
            }
        }
        if (frame->frameFormat().hasProperty(QTextFormat::BackgroundBrush)) {
            return frame->frameFormat().background().color();
        }
    }
    return base;
}

QColor groundOf(const QTextFormat& format, const QColor& behind)
{
    return format.hasProperty(QTextFormat::BackgroundBrush) ? format.background().color() : behind;
}

QColor inkOn(const QColor& ground)
{
    return contrast(Qt::black, ground) > contrast(Qt::white, ground) ? Qt::black : Qt::white;
}

} // namespace

void repairContrast(QTextDocument& document, int position, const QPalette& palette, const QColor& linkColor)
{
    if (!hasGrounds(document)) {
        return;
    }
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    std::vector<Change> changes;
    for (QTextBlock block = document.findBlock(position); block.isValid(); block = block.next()) {
        const QColor behind = groundOf(block.blockFormat(), frameGround(block, base));
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const auto format = it.fragment().charFormat();
            const QColor ground = groundOf(format, behind);
            const bool isPlain = !format.hasProperty(QTextFormat::ForegroundBrush);
            const bool isLink = !isPlain && format.foreground().color().rgb() == linkColor.rgb();
            if ((isPlain || isLink) && ground.alpha() != 0 &&
                contrast(isPlain ? text : linkColor, ground) < LeastContrast) {
                changes.push_back({it.fragment().position(), it.fragment().length(),
                                   isPlain ? inkOn(ground) : readableOn(linkColor, ground)});
            }
        }
    }
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (const auto& change : changes) {
        QTextCharFormat format;
        format.setForeground(change.color);
        cursor.setPosition(change.position);
        cursor.setPosition(change.position + change.length, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(format);
    }
    cursor.endEditBlock();
}
