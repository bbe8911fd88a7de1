// SPDX-License-Identifier: MIT
#include "mainwindow/displaydialog.h"

#include "browser/helpsettings.h"
#include "browser/pageview.h"

namespace {

/// What was left as it is stays the desktop's.
void applyChoice(const HelpSettings& dialog, PageView& view)
{
    if (dialog.getFontFamily() != view.getFontFamily()) {
        view.setFontFamily(dialog.getFontFamily());
    }
    if (dialog.getFontFixedFamily() != view.getFontFixedFamily()) {
        view.setFontFixedFamily(dialog.getFontFixedFamily());
    }
    if (dialog.getLinkUnderline() != view.getLinkUnderline()) {
        view.setLinkUnderline(dialog.getLinkUnderline());
    }
    if (dialog.getLinkColor() != view.getLinkColor()) {
        view.setLinkColor(dialog.getLinkColor());
    }
}

} // namespace

void openDisplayDialog(QWidget* window, PageView& view)
{
    auto* dialog = new HelpSettings(window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFontFamily(view.getFontFamily());
    dialog->setFontFixedFamily(view.getFontFixedFamily());
    dialog->setLinkUnderline(view.getLinkUnderline());
    dialog->setLinkColor(view.getLinkColor());
    QObject::connect(dialog, &QDialog::accepted, &view, [dialog, &view] { applyChoice(*dialog, view); });
    dialog->open();
}
