// SPDX-License-Identifier: MIT
#include "mainwindow/displaydialog.h"

#include "browser/colorscheme.h"
#include "browser/helpsettings.h"
#include "browser/pageview.h"

namespace {

void fillIn(HelpSettings& dialog, const PageView& view)
{
    dialog.setFontFamily(view.getFontFamily());
    dialog.setFontFixedFamily(view.getFontFixedFamily());
    dialog.setFontSize(view.getFontSize());
    dialog.setLinkUnderline(view.getLinkUnderline());
    dialog.setLinkColor(view.getLinkColor());
    dialog.setLineWidth(view.lineWidth());
    dialog.setColorScheme(appliedColorScheme());
}

/// What was left as it is stays the desktop's.
void applyChoice(const HelpSettings& dialog, PageView& view)
{
    const auto apply = [&view](const auto& chosen, const auto& present, auto set) {
        if (chosen != present) {
            (view.*set)(chosen);
        }
    };
    apply(dialog.getFontFamily(), view.getFontFamily(), &PageView::setFontFamily);
    apply(dialog.getFontFixedFamily(), view.getFontFixedFamily(), &PageView::setFontFixedFamily);
    apply(dialog.getFontSize(), view.getFontSize(), &PageView::setFontSize);
    apply(dialog.getLinkUnderline(), view.getLinkUnderline(), &PageView::setLinkUnderline);
    apply(dialog.getLinkColor(), view.getLinkColor(), &PageView::setLinkColor);
    apply(dialog.getLineWidth(), view.lineWidth(), &PageView::setLineWidth);
    // Last, as it changes what links look like by themselves.
    applyColorScheme(dialog.getColorScheme());
}

/// A view that follows the desktop tells the values.
class DesktopLooks : public PageView {
public:
    using PageView::PageView;

protected:
    [[nodiscard]] QString linkTarget(const QString& href) const override { return href; }
};

} // namespace

void openDisplayDialog(QWidget* window, PageView& view)
{
    auto* dialog = new HelpSettings(window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    fillIn(*dialog, view);
    QObject::connect(dialog, &HelpSettings::resetRequested, dialog, [dialog] {
        const DesktopLooks desktop(nullptr);
        fillIn(*dialog, desktop);
        dialog->setColorScheme(ColorScheme::Desktop);
        dialog->setProperty("isReset", true);
    });
    QObject::connect(dialog, &QDialog::accepted, &view, [dialog, &view] {
        if (dialog->property("isReset").toBool()) {
            view.resetChoices();
        }
        applyChoice(*dialog, view);
    });
    dialog->open();
}
