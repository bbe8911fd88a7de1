// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

enum class ColorScheme;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QSpinBox;
class QTextBrowser;

/// Lets the user choose how pages look: fonts, links, lines and colours, with a sample of them. It shows and
/// gives values only; its user applies them.
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
    /// In points, or in pixels when the font is sized in pixels.
    void setFontSize(int size);
    [[nodiscard]] int getFontSize() const;
    /// In characters.
    void setLineWidth(int characters);
    [[nodiscard]] int getLineWidth() const;
    void setColorScheme(ColorScheme scheme);
    [[nodiscard]] ColorScheme getColorScheme() const;

Q_SIGNALS:
    /// The user wants all values to be the desktop's; they are to be set anew.
    void resetRequested();

protected Q_SLOTS:
    virtual void slotLinkColorClicked();

private:
    void buildLayout();
    [[nodiscard]] QGridLayout* buildFields();
    [[nodiscard]] QGridLayout* buildButtons();
    void buildMore();
    void connectSample();
    void showSample();

    QLabel* m_fontLabel;
    QComboBox* m_fontCombo;
    QLabel* m_fontFixedLabel;
    QComboBox* m_fontFixedCombo;
    QLabel* m_linkColorLabel;
    QPushButton* m_linkColorButton;
    QCheckBox* m_underlineCheck;
    QLabel* m_sizeLabel;
    QSpinBox* m_sizeSpin;
    QLabel* m_schemeLabel;
    QComboBox* m_schemeCombo;
    QLabel* m_lineWidthLabel;
    QSpinBox* m_lineWidthSpin;
    QTextBrowser* m_sample;
    QPushButton* m_resetButton;
    QPushButton* m_okButton;
    QPushButton* m_cancelButton;
};
