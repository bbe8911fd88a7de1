// SPDX-License-Identifier: MIT
#pragma once

#include "desk/libraryentry.h"

#include <QStringList>
#include <QWidget>

#include <vector>

class LibraryList;
class QLabel;
class QLineEdit;
class QPushButton;

/// What stands in the place of a page while none is shown: the help sets that are open, that are installed,
/// and that were open before. It shows values only; what is done with a help set is for its user to do.
class LibraryPage : public QWidget {
    Q_OBJECT

public:
    explicit LibraryPage(QWidget* parent);

    /// In the order in which they are to be shown; kinds stand together. The current one stays so.
    void setEntries(const std::vector<LibraryEntry>& entries);
    /// What is known of a help set by now, wherever it is listed; its kind does not matter.
    void setFacts(const LibraryEntry& facts);
    /// Sentences on what could not be opened.
    void setNotices(const QStringList& notices);
    /// The titles of what was open together; none for no such offer.
    void setSession(const QStringList& titles);

    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

Q_SIGNALS:
    void openRequested(const QString& fileName);
    /// To put it on the list of installed help sets, or to take it off.
    void installRequested(const QString& fileName, bool isInstalled);
    /// To close it, to take it off the installed ones, or to forget it.
    void removeRequested(LibraryEntry::Kind kind, const QString& fileName);
    void searchRequested(const QString& fileName);
    void addRequested();
    /// The user wants to see what is on the machine.
    void machineRequested();
    void manualRequested();
    void sessionRequested();
    void clearRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildLayout();
    void connectParts();
    void showCommands();
    void openMenu(const QPoint& point);
    void open();
    void remove();

    QLabel* m_heading;
    QLabel* m_hint; ///< while nothing is open
    QLabel* m_notices;
    QPushButton* m_addButton;
    QPushButton* m_machineButton;
    QPushButton* m_sessionButton;
    QPushButton* m_manualButton;
    QLineEdit* m_filter;
    LibraryList* m_list;
    QWidget* m_rest; ///< the room of the list while there is nothing to list
    QPushButton* m_openButton;
    QPushButton* m_installButton;
    QPushButton* m_removeButton;
    QPushButton* m_searchButton;
    QPushButton* m_clearButton;
};
