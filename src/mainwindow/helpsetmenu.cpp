// SPDX-License-Identifier: MIT
#include "mainwindow/helpsetmenu.h"

#include "library/tooltip.h"

#include <QProxyStyle>
#include <QStyleOptionMenuItem>

#include <algorithm>

namespace {

constexpr qsizetype LongestText = 4096; // characters; no path is longer
constexpr int WidestText = 60;          // average characters on the screen

int widestText(const QFontMetrics& metrics)
{
    return WidestText * metrics.averageCharWidth();
}

/// Keeps a menu from growing as wide as its longest text.
class NarrowMenuStyle : public QProxyStyle {
public:
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override
    {
        const int widest = widestText(option->fontMetrics);
        return QProxyStyle::sizeFromContents(
            type, option, type == CT_MenuItem ? QSize(std::min(size.width(), widest), size.height()) : size,
            widget);
    }
};

/// Without mnemonics or a shortcut column.
QString entryText(const QString& title)
{
    return title.simplified().left(LongestText).replace(u'&', QStringLiteral("&&"));
}

/// A path keeps the name of its file, which tells it from its neighbours.
QString shortened(const QString& text, const QFontMetrics& metrics)
{
    const int width = widestText(metrics);
    const qsizetype name = text.startsWith(u'/') ? text.lastIndexOf(u'/') : text.size();
    const int nameWidth = metrics.horizontalAdvance(text.sliced(name));
    if (name == text.size() || nameWidth > width / 2) {
        return metrics.elidedText(text, Qt::ElideMiddle, width, Qt::TextShowMnemonic);
    }
    return metrics.elidedText(text.first(name), Qt::ElideMiddle, width - nameWidth, Qt::TextShowMnemonic) +
           text.sliced(name);
}

} // namespace

HelpSetMenu::HelpSetMenu(const QString& title, QWidget* parent) : QMenu(title, parent)
{
    auto* narrow = new NarrowMenuStyle;
    narrow->setParent(this);
    setStyle(narrow);
    setToolTipsVisible(true);
    setEnabled(false);
}

int HelpSetMenu::addEntry(const QString& title, const QString& fileName)
{
    const int id = ++m_lastId;
    auto* action = addAction(entryText(title), this, [this, id] { Q_EMIT chosen(id); });
    action->setData(id);
    action->setToolTip(plainToolTip(fileName));
    setEnabled(true);
    return id;
}

void HelpSetMenu::removeEntry(int id)
{
    for (auto* action : actions()) {
        if (action->data().toInt() == id) {
            removeAction(action);
            // It may be the one whose triggering led here.
            action->deleteLater();
        }
    }
    setEnabled(!isEmpty());
}

void HelpSetMenu::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const
{
    QMenu::initStyleOption(option, action);
    option->text = shortened(option->text, option->fontMetrics);
}
