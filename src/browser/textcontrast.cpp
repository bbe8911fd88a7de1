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

/// The colours that the viewer gives to texts, made readable on one ground after another.
class Inks {
public:
    Inks(const QColor& text, const QColor& link) : m_text(text), m_link(link) {}

    /// What a text or a link is to have on a ground; invalid when it can be read as it is.
    [[nodiscard]] QColor on(const QColor& ground, bool isLink)
    {
        if (ground != m_ground) {
            m_ground = ground;
            m_textOnGround = contrast(m_text, ground) < LeastContrast ? inkOn(ground) : QColor();
            m_linkOnGround = contrast(m_link, ground) < LeastContrast ? readableOn(m_link, ground) : QColor();
        }
        return isLink ? m_linkOnGround : m_textOnGround;
    }

private:
    QColor m_text;
    QColor m_link;
    QColor m_ground; ///< of the two below
    QColor m_textOnGround;
    QColor m_linkOnGround;
};

} // namespace

void repairContrast(QTextDocument& document, int position, const QPalette& palette, const QColor& linkColor)
{
    if (!hasGrounds(document)) {
        return;
    }
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    Inks inks(palette.color(QPalette::Active, QPalette::Text), linkColor);
    std::vector<Change> changes;
    for (QTextBlock block = document.findBlock(position); block.isValid(); block = block.next()) {
        const QColor behind = groundOf(block.blockFormat(), frameGround(block, base));
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const auto format = it.fragment().charFormat();
            const QColor ground = groundOf(format, behind);
            const bool isPlain = !format.hasProperty(QTextFormat::ForegroundBrush);
            const bool isLink = !isPlain && format.foreground().color().rgb() == linkColor.rgb();
            const QColor ink =
                (isPlain || isLink) && ground.alpha() != 0 ? inks.on(ground, isLink) : QColor();
            if (ink.isValid()) {
                changes.push_back({it.fragment().position(), it.fragment().length(), ink});
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
