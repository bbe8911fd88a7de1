// SPDX-License-Identifier: MIT
#include "browser/helpfinddialog.h"

#include "browser/helpbrowser.h"
#include "browser/messages.h"
#include "browser/pagematches.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

constexpr int Margin = 8;             // pixels
constexpr int OuterSpacing = 10;      // pixels
constexpr int InnerSpacing = 4;       // pixels
constexpr int RefreshDelay = 150;     // ms, so that typing is not held up
constexpr int LongestTextShown = 200; // characters in a message

QGridLayout* makeGrid(int margin)
{
    auto* grid = new QGridLayout;
    grid->setContentsMargins(margin, margin, margin, margin);
    grid->setSpacing(InnerSpacing);
    return grid;
}

void fill(QGroupBox* group, QWidget* first, QWidget* second)
{
    auto* grid = makeGrid(Margin);
    grid->setAlignment(Qt::AlignTop);
    grid->addWidget(first, 0, 0);
    grid->addWidget(second, 1, 0);
    group->setLayout(grid);
}

} // namespace

HelpFindDialog::HelpFindDialog(QWidget* parent, HelpBrowser* browser)
    : QDialog(parent), m_browser(browser), m_findEdit(new QLineEdit(this)),
      m_findLabel(new QLabel(tr("Find:"), this)), m_optionsGroup(new QGroupBox(tr("Options"), this)),
      m_wholeWordsCheck(new QCheckBox(tr("Whole words only"), m_optionsGroup)),
      m_caseSensitiveCheck(new QCheckBox(tr("Case sensitive"), m_optionsGroup)),
      m_directionGroup(new QGroupBox(tr("Direction"), this)),
      m_forwardRadio(new QRadioButton(tr("Forward"), m_directionGroup)),
      m_backwardRadio(new QRadioButton(tr("Backward"), m_directionGroup)), m_countLabel(new QLabel(this)),
      m_findButton(new QPushButton(tr("Find"), this)), m_closeButton(new QPushButton(tr("Close"), this)),
      m_matches(new PageMatches(browser, this))
{
    setWindowTitle(tr("Find text"));
    setWindowIcon(parent->window()->windowIcon());
    m_findLabel->setBuddy(m_findEdit);
    m_countLabel->setObjectName(u"countLabel");
    m_forwardRadio->setChecked(true);
    m_findButton->setDefault(true);
    buildLayout();
    buildTabOrder();
    connectMarks();
    connect(m_findButton, &QPushButton::clicked, this, &HelpFindDialog::slotFind);
    connect(m_closeButton, &QPushButton::clicked, this, &QDialog::reject);
}

void HelpFindDialog::buildLayout()
{
    fill(m_optionsGroup, m_wholeWordsCheck, m_caseSensitiveCheck);
    fill(m_directionGroup, m_forwardRadio, m_backwardRadio);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(Margin, Margin, Margin, Margin);
    layout->setSpacing(OuterSpacing);
    layout->addLayout(buildFields(), 0, 0);
    layout->addItem(new QSpacerItem(20, 0, QSizePolicy::Minimum, QSizePolicy::Expanding), 1, 0);
    layout->addLayout(buildButtons(), 2, 0);
}

QGridLayout* HelpFindDialog::buildFields()
{
    auto* findRow = makeGrid(0);
    findRow->addWidget(m_findLabel, 0, 0);
    findRow->addWidget(m_findEdit, 0, 1);
    auto* fields = makeGrid(0);
    fields->addLayout(findRow, 0, 0, 1, 2);
    fields->addWidget(m_optionsGroup, 1, 0);
    fields->addWidget(m_directionGroup, 1, 1);
    return fields;
}

QGridLayout* HelpFindDialog::buildButtons()
{
    auto* buttons = makeGrid(0);
    buttons->addWidget(m_countLabel, 0, 0);
    buttons->addItem(new QSpacerItem(57, 0, QSizePolicy::Expanding, QSizePolicy::Minimum), 0, 1);
    buttons->addWidget(m_findButton, 0, 2);
    buttons->addWidget(m_closeButton, 0, 3);
    return buttons;
}

void HelpFindDialog::buildTabOrder()
{
    setTabOrder(m_findEdit, m_wholeWordsCheck);
    setTabOrder(m_wholeWordsCheck, m_caseSensitiveCheck);
    setTabOrder(m_caseSensitiveCheck, m_forwardRadio);
    setTabOrder(m_forwardRadio, m_backwardRadio);
    setTabOrder(m_backwardRadio, m_findButton);
    setTabOrder(m_findButton, m_closeButton);
}

void HelpFindDialog::connectMarks()
{
    m_refreshTimer.setSingleShot(true);
    m_refreshTimer.setInterval(RefreshDelay);
    const auto refreshSoon = qOverload<>(&QTimer::start);
    connect(&m_refreshTimer, &QTimer::timeout, this, &HelpFindDialog::refreshMarks);
    connect(m_findEdit, &QLineEdit::textChanged, &m_refreshTimer, refreshSoon);
    connect(m_wholeWordsCheck, &QCheckBox::toggled, &m_refreshTimer, refreshSoon);
    connect(m_caseSensitiveCheck, &QCheckBox::toggled, &m_refreshTimer, refreshSoon);
    connect(m_browser, &QTextEdit::textChanged, this, &HelpFindDialog::pageChanged);
    connect(m_browser, &QTextEdit::selectionChanged, this, &HelpFindDialog::showCount);
    connect(m_matches, &PageMatches::counted, this, &HelpFindDialog::showCount);
}

QString HelpFindDialog::findText() const
{
    return m_findEdit->text();
}

void HelpFindDialog::setFindText(const QString& text)
{
    m_findEdit->setText(text);
}

HelpFindDialog::Search HelpFindDialog::search() const
{
    return {findText(), m_wholeWordsCheck->isChecked(), m_caseSensitiveCheck->isChecked(),
            m_forwardRadio->isChecked()};
}

void HelpFindDialog::setSearch(const Search& search)
{
    setFindText(search.text);
    m_wholeWordsCheck->setChecked(search.wholeWords);
    m_caseSensitiveCheck->setChecked(search.caseSensitive);
    (search.forward ? m_forwardRadio : m_backwardRadio)->setChecked(true);
}

void HelpFindDialog::resetFind()
{
    m_lastSearchFailed = false;
    m_restartAllowed = true;
}

void HelpFindDialog::findNext(bool forward)
{
    if (!findText().isEmpty()) {
        step(forward);
    }
}

void HelpFindDialog::slotFind()
{
    step(m_forwardRadio->isChecked());
}

void HelpFindDialog::done(int result)
{
    QDialog::done(result);
    Q_EMIT done();
}

/// One search: on from the current position; after a failure from the other end, if the user allowed that.
void HelpFindDialog::step(bool forward)
{
    if (m_message != nullptr) {
        return;
    }
    m_browser->completePage();
    if (!m_lastSearchFailed) {
        m_lastSearchFailed = !findOn(forward);
        if (m_lastSearchFailed) {
            askRestart();
        }
    } else if (m_restartAllowed) {
        m_lastSearchFailed = !findFromOtherEnd(forward);
        if (m_lastSearchFailed) {
            reportMissing();
        }
    }
}

bool HelpFindDialog::findOn(bool forward)
{
    return m_browser->find(soughtText(), flags(forward));
}

/// The selection stays when nothing is found.
bool HelpFindDialog::findFromOtherEnd(bool forward)
{
    QTextCursor cursor(m_browser->document());
    cursor.movePosition(forward ? QTextCursor::Start : QTextCursor::End);
    const auto found = m_browser->document()->find(soughtText(), cursor, flags(forward));
    if (found.isNull()) {
        return false;
    }
    m_browser->setTextCursor(found);
    return true;
}

void HelpFindDialog::askRestart()
{
    m_message = openMessage(QMessageBox::Information, tr("Not found"), tr("Start search from begin ?"),
                            messageParent(), QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    connect(m_message, &QDialog::finished, this,
            [this](int answer) { m_restartAllowed = answer == QMessageBox::Yes; });
}

void HelpFindDialog::reportMissing()
{
    QString text = findText();
    if (text.size() > LongestTextShown) {
        text = text.first(LongestTextShown) + u'…';
    }
    QString report = tr("'%1' not found.").arg(text);
    if (isBeginning()) {
        report += u'\n' + tr("Only the beginning of this page is shown.");
    }
    m_message = openMessage(QMessageBox::Information, tr("Not found"), report, messageParent());
}

bool HelpFindDialog::isBeginning() const
{
    return m_browser->page().prepared.isBeginning;
}

QWidget* HelpFindDialog::messageParent()
{
    return isVisible() ? this : parentWidget();
}

/// In pages, no-break spaces match spaces.
QString HelpFindDialog::soughtText() const
{
    return findText().replace(QChar::Nbsp, u' ');
}

QTextDocument::FindFlags HelpFindDialog::flags(bool forward) const
{
    QTextDocument::FindFlags flags;
    flags.setFlag(QTextDocument::FindBackward, !forward);
    flags.setFlag(QTextDocument::FindCaseSensitively, m_caseSensitiveCheck->isChecked());
    flags.setFlag(QTextDocument::FindWholeWords, m_wholeWordsCheck->isChecked());
    return flags;
}

void HelpFindDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    m_findEdit->setFocus();
    m_findEdit->selectAll();
    m_refreshTimer.start();
}

void HelpFindDialog::hideEvent(QHideEvent* event)
{
    QDialog::hideEvent(event);
    m_refreshTimer.stop();
    m_matches->clear();
}

/// What the user answered holds as long as the dialog is on the screen; without it, for the page.
void HelpFindDialog::pageChanged()
{
    if (!isVisible()) {
        resetFind();
        return;
    }
    m_countLabel->clear();
    m_refreshTimer.start();
}

void HelpFindDialog::refreshMarks()
{
    if (isVisible()) {
        m_browser->completePage();
        m_matches->search(soughtText(), flags(true));
    }
}

void HelpFindDialog::showCount()
{
    if (m_refreshTimer.isActive() || m_matches->isSearching()) {
        return; // it comes with the new matches
    }
    const int count = m_matches->count();
    const QString number =
        m_matches->isCapped() ? tr("more than %1").arg(PageMatches::MaximumCount) : QString::number(count);
    if (findText().isEmpty() || m_browser->document()->isEmpty()) {
        m_countLabel->clear();
    } else if (count == 0) {
        m_countLabel->setText(isBeginning() ? tr("Not in the part that is shown") : tr("Not on this page"));
    } else if (m_matches->current() == 0) {
        m_countLabel->setText(tr("%1 on this page").arg(number));
    } else {
        m_countLabel->setText(tr("%1 of %2").arg(QString::number(m_matches->current()), number));
    }
}
