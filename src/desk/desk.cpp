// SPDX-License-Identifier: MIT
#include "desk/desk.h"

#include "browser/helpbrowser.h"
#include "desk/arrivalmark.h"
#include "desk/breadcrumb.h"
#include "desk/findline.h"
#include "desk/librarypage.h"
#include "desk/pagegestures.h"
#include "library/helplibrary.h"

#include <QScopedValueRollback>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int PassingTime = 500; // ms

} // namespace

Desk::Desk(HelpLibrary& library, QStatusBar& statusBar, QWidget* parent)
    : QWidget(parent), m_library(library), m_browser(new HelpBrowser(library, this)),
      m_breadcrumb(new Breadcrumb(library, this)), m_front(new QStackedWidget(this)),
      m_arrival(new ArrivalMark(*m_browser)), m_search(parent, m_browser),
      m_marks(*m_browser, statusBar, nullptr)
{
    m_front->addWidget(m_browser);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_breadcrumb);
    layout->addWidget(m_front, 1);
    setFocusProxy(m_browser);
    m_passing.setSingleShot(true);
    m_passing.setInterval(PassingTime);
    new PageGestures(*m_browser);
    new QShortcut(Qt::Key_Slash, m_browser, this, &Desk::openFindLine, Qt::WidgetShortcut);
    connectView();
    connectLibrary();
    showHint();
}

void Desk::connectView()
{
    const auto follow = [this](void (HelpBrowser::*signal)(bool), Condition condition) {
        connect(m_browser, signal, this,
                [this, condition](bool holds) { Q_EMIT conditionChanged(condition, holds); });
    };
    connect(m_browser, &HelpBrowser::sourceEmpty, this,
            [this](bool isEmpty) { Q_EMIT conditionChanged(Condition::Page, !isEmpty); });
    follow(&HelpBrowser::backEnabled, Condition::Back);
    follow(&HelpBrowser::forwardEnabled, Condition::Forward);
    follow(&HelpBrowser::upEnabled, Condition::Up);
    follow(&HelpBrowser::homeEnabled, Condition::Home);
    follow(&HelpBrowser::syncEnabled, Condition::Row);
    connect(m_browser, &HelpBrowser::selectionChanged, this, [this] {
        Q_EMIT conditionChanged(Condition::Selection, m_browser->textCursor().hasSelection());
    });
    connect(m_browser, &HelpBrowser::captionChanged, this, &Desk::captionChanged);
    connect(m_browser, &HelpBrowser::linkHovered, this, &Desk::linkHovered);
    connect(m_browser, &HelpBrowser::helpSetRequested, this, &Desk::helpSetRequested);
    connect(m_browser, &HelpBrowser::noticed, this, &Desk::linkHovered);
    connect(m_browser, &HelpBrowser::pageChanged, this, &Desk::pageChanged);
    connect(m_browser, &HelpBrowser::currentChanged, this, &Desk::currentChanged);
    connect(m_browser, &HelpBrowser::sourceEmpty, this, &Desk::chooseFront);
    connect(m_browser, &HelpBrowser::arrived, m_arrival, &ArrivalMark::mark);
    connect(&m_marks, &SearchMarks::arrived, m_arrival, &ArrivalMark::mark);
    connect(m_breadcrumb, &Breadcrumb::chosen, this, [this](HelpContentsItem* record) { show(record); });
}

void Desk::connectLibrary()
{
    connect(&m_library, &HelpLibrary::helpSetAboutToBeRemoved, m_browser,
            [this](const HelpContentsRoot* root) { m_browser->forget(*root); });
    connect(&m_library, &HelpLibrary::helpSetRemoved, this, &Desk::recover);
    connect(&m_library, &HelpLibrary::becameBusy, this, &Desk::showHint);
    connect(&m_library, &HelpLibrary::becameIdle, this, [this] {
        showHint();
        if (isVisible() && !m_browser->hasPage()) {
            chooseFront();
        }
    });
}

/// Who removes help sets on the library page stays there.
void Desk::recover()
{
    const QScopedValueRollback staying(m_libraryStays, isLibraryShown());
    m_browser->recover();
    if (m_libraryStays) {
        Q_EMIT conditionChanged(Condition::Page, false);
    }
    m_breadcrumb->setRow(m_libraryStays ? nullptr : currentRow());
    showHint();
    if (!m_browser->hasPage() && !m_libraryStays && isVisible()) {
        showLibrary();
    }
}

void Desk::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!m_browser->hasPage()) {
        chooseFront();
    }
}

void Desk::currentChanged()
{
    m_breadcrumb->setRow(m_libraryStays ? nullptr : currentRow());
    Q_EMIT rowChanged(currentRow());
}

void Desk::chooseFront()
{
    if (m_libraryStays) {
        return;
    }
    if (m_browser->hasPage() || m_library.isBusy() || !m_library.roots().empty() || !isVisible()) {
        showPage();
    } else {
        showLibrary();
    }
}

void Desk::showPage()
{
    if (isLibraryShown()) {
        m_front->setCurrentWidget(m_browser);
        setFocusProxy(m_browser);
        Q_EMIT conditionChanged(Condition::Page, m_browser->hasPage());
        m_breadcrumb->setRow(currentRow());
    }
}

void Desk::showLibrary()
{
    if (m_libraryPage == nullptr) {
        m_libraryPage = new LibraryPage(this);
        m_front->addWidget(m_libraryPage);
    }
    m_front->setCurrentWidget(m_libraryPage);
    setFocusProxy(m_libraryPage);
    m_breadcrumb->setRow(nullptr);
    if (m_findLine != nullptr && m_findLine->isVisible()) {
        m_findLine->finish();
    }
    Q_EMIT conditionChanged(Condition::Page, false);
    Q_EMIT libraryShown(m_libraryPage);
}

bool Desk::isLibraryShown() const
{
    return m_libraryPage != nullptr && m_front->currentWidget() == m_libraryPage;
}

FindLine& Desk::findLine()
{
    if (m_findLine == nullptr) {
        m_findLine = new FindLine(*m_browser, this);
        static_cast<QVBoxLayout*>(layout())->addWidget(m_findLine);
        connect(m_findLine, &FindLine::soughtChanged, &m_search, &PageSearch::setLastText);
    }
    return *m_findLine;
}

HelpContentsItem* Desk::current() const
{
    return m_browser->getCurrentLink();
}

const HelpContentsListViewItem* Desk::currentRow() const
{
    const auto* record = current();
    return record == nullptr ? nullptr : record->listViewItem;
}

int Desk::place() const
{
    return m_browser->place();
}

void Desk::show(HelpContentsItem* record)
{
    m_passing.stop();
    m_browser->setSource(record);
    if (record == nullptr) {
        Q_EMIT captionChanged({});
    }
    chooseFront();
}

void Desk::showPassing(HelpContentsItem* record)
{
    m_browser->setPassing(m_passing.isActive());
    m_browser->setSource(record);
    m_browser->setPassing(false);
    m_passing.start();
    chooseFront();
}

void Desk::scrollTo(const QString& anchor)
{
    showPage();
    m_browser->scrollTo(anchor);
}

void Desk::show(const HelpIndexItem* keyword)
{
    if (keyword == nullptr) {
        show(static_cast<HelpContentsItem*>(nullptr));
    } else {
        m_passing.stop();
        m_browser->setSource(*keyword);
        showPage();
    }
}

void Desk::show(const QString& page, int place)
{
    m_passing.stop();
    m_browser->setSource(page);
    m_browser->setPlace(place);
    showPage();
}

void Desk::showFound(const QString& page, const QString& query, const QString& language)
{
    m_search.close();
    m_marks.clear();
    m_passing.stop();
    m_browser->setSource(page);
    showPage();
    m_marks.mark(query, language);
}

void Desk::showAfresh(HelpContentsItem* record)
{
    m_browser->clearLinks();
    show(record);
}

/// What the view says while it has no page.
void Desk::showHint()
{
    m_browser->setHint(m_library.isBusy()          ? tr("Loading…")
                       : m_library.roots().empty() ? tr("No help set is open.")
                                                   : tr("Choose a page in the contents."));
}

void Desk::find()
{
    if (m_findLine != nullptr && m_findLine->isVisible()) {
        m_findLine->finish();
    }
    m_search.editFind();
    m_marks.clear();
}

void Desk::openFindLine()
{
    m_search.close();
    m_marks.clear();
    const QString selected = m_browser->textCursor().selectedText();
    findLine().open(selected.isEmpty() ? m_search.lastText() : selected);
}

void Desk::findAgain(bool forward)
{
    if (m_findLine != nullptr && m_findLine->isVisible()) {
        m_findLine->step(forward);
    } else if (m_marks.isOn()) {
        m_marks.step(forward);
    } else if (!m_search.lastText().isEmpty()) {
        m_search.findNext(forward);
    } else {
        openFindLine();
    }
}

bool Desk::stop()
{
    if (m_findLine != nullptr && m_findLine->isVisible()) {
        m_findLine->cancel();
        return true;
    }
    if (m_marks.isOn()) {
        m_marks.clear();
        return true;
    }
    if (isLibraryShown() && m_browser->hasPage()) {
        showPage();
        m_browser->setFocus(Qt::OtherFocusReason);
        return true;
    }
    const bool isFilling = m_browser->isFilling();
    m_browser->stopFilling();
    return isFilling;
}
