// SPDX-License-Identifier: MIT
#include "browser/helpsettings.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace {

constexpr int DialogMargin = 8;      // pixels
constexpr int Spacing = 4;           // pixels
constexpr int FamilyNameLength = 24; // characters that a font list shows at least

/// Its face is of exactly the colour of its palette's button, which styles make lighter or darker.
class ColorButton : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        constexpr int frame = 4; // pixels
        QPushButton::paintEvent(event);
        QPainter(this).fillRect(rect().adjusted(frame, frame, -frame, -frame),
                                palette().color(QPalette::Active, QPalette::Button));
    }
};

void fill(QComboBox& combo, const QStringList& families)
{
    auto policy = combo.sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Expanding);
    policy.setVerticalPolicy(QSizePolicy::Fixed);
    combo.setSizePolicy(policy);
    // Measuring every name would take long, and one long name would stretch the dialog.
    combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo.setMinimumContentsLength(FamilyNameLength);
    combo.addItems(families);
}

void select(QComboBox& combo, const QString& family)
{
    int index = combo.findText(family, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index < 0) {
        index = 0;
        combo.insertItem(index, family);
    }
    combo.setCurrentIndex(index);
}

} // namespace

HelpSettings::HelpSettings(QWidget* parent)
    : QDialog(parent), m_fontLabel(new QLabel(tr("Font:"), this)), m_fontCombo(new QComboBox(this)),
      m_fontFixedLabel(new QLabel(tr("Font fixed:"), this)), m_fontFixedCombo(new QComboBox(this)),
      m_linkColorLabel(new QLabel(tr("Link color:"), this)), m_linkColorButton(new ColorButton(this)),
      m_underlineCheck(new QCheckBox(tr("Underline links"), this)),
      m_okButton(new QPushButton(tr("Ok"), this)), m_cancelButton(new QPushButton(tr("Cancel"), this))
{
    setModal(true);
    setWindowTitle(tr("Settings"));
    setWindowIcon(parent->window()->windowIcon());
    const QStringList families = QFontDatabase::families();
    fill(*m_fontCombo, families);
    fill(*m_fontFixedCombo, families);
    m_fontLabel->setBuddy(m_fontCombo);
    m_fontFixedLabel->setBuddy(m_fontFixedCombo);
    m_linkColorLabel->setBuddy(m_linkColorButton);
    m_linkColorButton->setAutoDefault(false);
    m_linkColorButton->setToolTip(tr("Choose the color of links"));
    m_okButton->setDefault(true);
    buildLayout();
    connect(m_linkColorButton, &QPushButton::clicked, this, &HelpSettings::slotLinkColorClicked);
    connect(m_okButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_cancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

void HelpSettings::buildLayout()
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(DialogMargin, DialogMargin, DialogMargin, DialogMargin);
    layout->setSpacing(Spacing);
    layout->addLayout(buildFields(), 0, 0);
    layout->addWidget(m_underlineCheck, 1, 0);
    layout->addItem(new QSpacerItem(0, 10, QSizePolicy::Minimum, QSizePolicy::Expanding), 2, 0);
    layout->addLayout(buildButtons(), 3, 0);

    setTabOrder(m_fontCombo, m_fontFixedCombo);
    setTabOrder(m_fontFixedCombo, m_linkColorButton);
    setTabOrder(m_linkColorButton, m_underlineCheck);
    setTabOrder(m_underlineCheck, m_okButton);
    setTabOrder(m_okButton, m_cancelButton);
}

QGridLayout* HelpSettings::buildFields()
{
    auto* fields = new QGridLayout;
    fields->setContentsMargins(0, 0, 0, 0);
    fields->setSpacing(Spacing);
    fields->addWidget(m_fontLabel, 0, 0);
    fields->addWidget(m_fontCombo, 0, 1, 1, 2);
    fields->addWidget(m_fontFixedLabel, 1, 0);
    fields->addWidget(m_fontFixedCombo, 1, 1, 1, 2);
    fields->addWidget(m_linkColorLabel, 2, 0);
    fields->addWidget(m_linkColorButton, 2, 1);
    fields->addItem(new QSpacerItem(100, 0, QSizePolicy::Expanding, QSizePolicy::Minimum), 2, 2);
    return fields;
}

QGridLayout* HelpSettings::buildButtons()
{
    auto* buttons = new QGridLayout;
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(Spacing);
    buttons->addItem(new QSpacerItem(31, 0, QSizePolicy::Expanding, QSizePolicy::Minimum), 0, 0);
    buttons->addWidget(m_okButton, 0, 1);
    buttons->addWidget(m_cancelButton, 0, 2);
    return buttons;
}

void HelpSettings::setFontFamily(const QString& family)
{
    select(*m_fontCombo, family);
}

QString HelpSettings::getFontFamily() const
{
    return m_fontCombo->currentText();
}

void HelpSettings::setFontFixedFamily(const QString& family)
{
    select(*m_fontFixedCombo, family);
}

QString HelpSettings::getFontFixedFamily() const
{
    return m_fontFixedCombo->currentText();
}

void HelpSettings::setLinkColor(const QColor& color)
{
    QPalette colors = m_linkColorButton->palette();
    colors.setBrush(QPalette::Active, QPalette::Button, color);
    colors.setBrush(QPalette::Inactive, QPalette::Button, color);
    m_linkColorButton->setPalette(colors);
}

QColor HelpSettings::getLinkColor() const
{
    return m_linkColorButton->palette().color(QPalette::Active, QPalette::Button);
}

void HelpSettings::setLinkUnderline(bool underline)
{
    m_underlineCheck->setChecked(underline);
}

bool HelpSettings::getLinkUnderline() const
{
    return m_underlineCheck->isChecked();
}

void HelpSettings::slotLinkColorClicked()
{
    auto* colors = new QColorDialog(getLinkColor(), this);
    colors->setAttribute(Qt::WA_DeleteOnClose);
    connect(colors, &QColorDialog::colorSelected, this, &HelpSettings::setLinkColor);
    colors->open();
}
