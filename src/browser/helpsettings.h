// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;

/// Lets the user choose how pages look: fonts and links. It shows and gives values only; its user applies
/// them.
class HelpSettings : public QDialog {
    Q_OBJECT

public:
    /// Modal; takes the icon of the parent's window.
    explicit HelpSettings(QWidget* parent);

    /// A family that is not installed is put first in the list.
    void setFontFamily(const QString& family);
    [[nodiscard]] QString getFontFamily() const;
    void setFontFixedFamily(const QString& family);
    [[nodiscard]] QString getFontFixedFamily() const;
    void setLinkColor(const QColor& color);
    [[nodiscard]] QColor getLinkColor() const;
    void setLinkUnderline(bool underline);
    [[nodiscard]] bool getLinkUnderline() const;

protected Q_SLOTS:
    virtual void slotLinkColorClicked();

private:
    void buildLayout();
    [[nodiscard]] QGridLayout* buildFields();
    [[nodiscard]] QGridLayout* buildButtons();

    QLabel* m_fontLabel;
    QComboBox* m_fontCombo;
    QLabel* m_fontFixedLabel;
    QComboBox* m_fontFixedCombo;
    QLabel* m_linkColorLabel;
    QPushButton* m_linkColorButton;
    QCheckBox* m_underlineCheck;
    QPushButton* m_okButton;
    QPushButton* m_cancelButton;
};
