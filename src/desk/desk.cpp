// SPDX-License-Identifier: MIT
#include "desk/desk.h"

#include "browser/helpbrowser.h"
#include "library/helplibrary.h"

#include <QVBoxLayout>

Desk::Desk(HelpLibrary& library, QStatusBar& statusBar, QWidget* parent)
    : QWidget(parent), m_browser(new HelpBrowser(library, this)), m_search(parent, m_browser),
      m_marks(*m_browser, statusBar, nullptr)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_browser);
    setFocusProxy(m_browser);
    connectView();
    connectLibrary(library);
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
    connect(m_browser, &HelpBrowser::noticed, this, &Desk::linkHovered);
    connect(m_browser, &HelpBrowser::pageChanged, this, &Desk::pageChanged);
}

void Desk::connectLibrary(HelpLibrary& library)
{
    connect(&library, &HelpLibrary::helpSetAboutToBeRemoved, m_browser,
            [this](const HelpContentsRoot* root) { m_browser->forget(*root); });
    connect(&library, &HelpLibrary::helpSetRemoved, m_browser, &HelpBrowser::recover);
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
    m_browser->setSource(record);
    if (record == nullptr) {
        Q_EMIT captionChanged({});
    }
}

void Desk::show(const HelpIndexItem* keyword)
{
    if (keyword == nullptr) {
        show(static_cast<HelpContentsItem*>(nullptr));
    } else {
        m_browser->setSource(*keyword);
    }
}

void Desk::show(const QString& page, int place)
{
    m_browser->setSource(page);
    m_browser->setPlace(place);
}

void Desk::showFound(const QString& page, const QString& query, bool isEnglish)
{
    m_search.close();
    m_marks.clear();
    m_browser->setSource(page);
    m_marks.mark(query, isEnglish);
}

void Desk::showAfresh(HelpContentsItem* record)
{
    m_browser->clearLinks();
    show(record);
}

void Desk::setHint(const QString& hint)
{
    m_browser->setHint(hint);
}

void Desk::find()
{
    m_search.editFind();
    m_marks.clear();
}

void Desk::findAgain(bool forward)
{
    if (m_marks.isOn()) {
        m_marks.step(forward);
    } else {
        m_search.findNext(forward);
    }
}

bool Desk::stop()
{
    if (m_marks.isOn()) {
        m_marks.clear();
        return true;
    }
    const bool isFilling = m_browser->isFilling();
    m_browser->stopFilling();
    return isFilling;
}
