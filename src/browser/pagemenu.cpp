// SPDX-License-Identifier: MIT
#include "browser/pagemenu.h"

#include "browser/pageview.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>

void PageMenu::open(PageView& view, const Offers& offers, const QPoint& point)
{
    auto* menu = new QMenu(&view);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(&view, &PageView::pageChanged, menu, &QWidget::close);
    if (offers.openLink) {
        menu->addAction(PageView::tr("&Open Link"), &view, offers.openLink);
        menu->addAction(PageView::tr("Copy &Link Location"), &view,
                        [target = offers.linkTarget] { QApplication::clipboard()->setText(target); });
        menu->addSeparator();
    }
    if (offers.showPicture) {
        menu->addAction(PageView::tr("Show &Picture"), &view, offers.showPicture);
        menu->addSeparator();
    }
    auto* copyAction = menu->addAction(PageView::tr("&Copy"), &view, &QTextBrowser::copy);
    copyAction->setEnabled(view.textCursor().hasSelection());
    auto* selectAllAction = menu->addAction(PageView::tr("Select &All"), &view, [&view] {
        view.completePage();
        view.selectAll();
    });
    selectAllAction->setEnabled(view.hasPage());
    menu->popup(point);
}
