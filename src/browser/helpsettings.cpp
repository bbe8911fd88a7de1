// SPDX-License-Identifier: MIT
#include "browser/helpsettings.h"

#include "browser/colorscheme.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <QTextBrowser>

namespace {

constexpr int DialogMargin = 8; // pixels
constexpr int Spacing = 4;      // pixels
constexpr int SmallestSize = 4;
constexpr int LargestSize = 500;
constexpr int LeastLine = 40;        // characters
constexpr int LongestLine = 300;     // characters
constexpr int SampleLines = 8;       // of the dialog's font
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
      m_sizeLabel(new QLabel(tr("Size:"), this)), m_sizeSpin(new QSpinBox(this)),
      m_schemeLabel(new QLabel(tr("Colors:"), this)), m_schemeCombo(new QComboBox(this)),
      m_lineWidthLabel(new QLabel(tr("Line width:"), this)), m_lineWidthSpin(new QSpinBox(this)),
      m_sample(new QTextBrowser(this)), m_resetButton(new QPushButton(tr("&As the Desktop"), this)),
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
    buildMore();
    buildLayout();
    connectSample();
    connect(m_linkColorButton, &QPushButton::clicked, this, &HelpSettings::slotLinkColorClicked);
    connect(m_okButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_cancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

void HelpSettings::buildMore()
{
    m_sizeSpin->setRange(SmallestSize, LargestSize);
    m_sizeLabel->setBuddy(m_sizeSpin);
    m_schemeCombo->addItems({tr("As the desktop"), tr("Light"), tr("Dark")});
    m_schemeLabel->setBuddy(m_schemeCombo);
    m_lineWidthSpin->setRange(LeastLine, LongestLine);
    m_lineWidthSpin->setSuffix(tr(" characters"));
    m_lineWidthSpin->setToolTip(tr("Of the reading view, in wide windows"));
    m_lineWidthLabel->setBuddy(m_lineWidthSpin);
    m_sample->setAccessibleName(tr("Sample"));
    m_sample->setOpenLinks(false);
    m_sample->setFocusPolicy(Qt::NoFocus);
    m_sample->setFixedHeight(SampleLines * fontMetrics().lineSpacing());
    m_resetButton->setAutoDefault(false);
    m_resetButton->setToolTip(tr("Fonts, links, lines and colors as they are without a choice"));
}

/// The sample shows what is chosen at once.
void HelpSettings::connectSample()
{
    for (const auto* combo : {m_fontCombo, m_fontFixedCombo, m_schemeCombo}) {
        connect(combo, &QComboBox::currentIndexChanged, this, &HelpSettings::showSample);
    }
    connect(m_sizeSpin, &QSpinBox::valueChanged, this, &HelpSettings::showSample);
    connect(m_underlineCheck, &QCheckBox::toggled, this, &HelpSettings::showSample);
    connect(m_resetButton, &QPushButton::clicked, this, &HelpSettings::resetRequested);
}

void HelpSettings::showSample()
{
    const QPalette colors = paletteOf(getColorScheme());
    m_sample->setPalette(colors);
    QFont font(getFontFamily());
    font.setPointSize(getFontSize());
    m_sample->document()->setDefaultFont(font);
    const QString family = getFontFixedFamily().replace(u'\'', QStringLiteral("\\'"));
    const QString decoration = getLinkUnderline() ? QStringLiteral("underline") : QStringLiteral("none");
    m_sample->document()->setDefaultStyleSheet(
        QStringLiteral("pre, code { font-family: '%1'; } a { color: %2; text-decoration: %3; }")
            .arg(family, getLinkColor().name(), decoration));
    m_sample->setHtml(
        QStringLiteral("<p>%1 <a href=\"x\">%2</a>.</p><pre>if (size > 0) {\n    show();\n}</pre>")
            .arg(tr("Text of a page, with a").toHtmlEscaped(), tr("link in it").toHtmlEscaped()));
}

void HelpSettings::buildLayout()
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(DialogMargin, DialogMargin, DialogMargin, DialogMargin);
    layout->setSpacing(Spacing);
    layout->addLayout(buildFields(), 0, 0);
    layout->addWidget(m_underlineCheck, 1, 0);
    layout->addWidget(m_sample, 2, 0);
    layout->addItem(new QSpacerItem(0, 10, QSizePolicy::Minimum, QSizePolicy::Expanding), 3, 0);
    layout->addLayout(buildButtons(), 4, 0);

    setTabOrder(m_fontCombo, m_fontFixedCombo);
    setTabOrder(m_fontFixedCombo, m_linkColorButton);
    setTabOrder(m_linkColorButton, m_underlineCheck);
    setTabOrder(m_underlineCheck, m_sizeSpin);
    setTabOrder(m_sizeSpin, m_schemeCombo);
    setTabOrder(m_schemeCombo, m_lineWidthSpin);
    setTabOrder(m_lineWidthSpin, m_resetButton);
    setTabOrder(m_resetButton, m_okButton);
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
    fields->addWidget(m_sizeLabel, 3, 0);
    fields->addWidget(m_sizeSpin, 3, 1);
    fields->addWidget(m_schemeLabel, 4, 0);
    fields->addWidget(m_schemeCombo, 4, 1, 1, 2);
    fields->addWidget(m_lineWidthLabel, 5, 0);
    fields->addWidget(m_lineWidthSpin, 5, 1, 1, 2);
    return fields;
}

QGridLayout* HelpSettings::buildButtons()
{
    auto* buttons = new QGridLayout;
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(Spacing);
    buttons->addWidget(m_resetButton, 0, 0);
    buttons->addItem(new QSpacerItem(31, 0, QSizePolicy::Expanding, QSizePolicy::Minimum), 0, 1);
    buttons->addWidget(m_okButton, 0, 2);
    buttons->addWidget(m_cancelButton, 0, 3);
    buttons->setColumnStretch(1, 1);
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
    showSample();
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

void HelpSettings::setFontSize(int size)
{
    m_sizeSpin->setValue(size);
}

int HelpSettings::getFontSize() const
{
    return m_sizeSpin->value();
}

void HelpSettings::setLineWidth(int characters)
{
    m_lineWidthSpin->setValue(characters);
}

int HelpSettings::getLineWidth() const
{
    return m_lineWidthSpin->value();
}

void HelpSettings::setColorScheme(ColorScheme scheme)
{
    m_schemeCombo->setCurrentIndex(int(scheme));
}

ColorScheme HelpSettings::getColorScheme() const
{
    return ColorScheme(m_schemeCombo->currentIndex());
}

void HelpSettings::slotLinkColorClicked()
{
    auto* colors = new QColorDialog(getLinkColor(), this);
    colors->setAttribute(Qt::WA_DeleteOnClose);
    connect(colors, &QColorDialog::colorSelected, this, &HelpSettings::setLinkColor);
    colors->open();
}
