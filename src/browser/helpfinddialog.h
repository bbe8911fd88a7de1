// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QPointer>
#include <QTextDocument>
#include <QTimer>

class HelpBrowser;
class PageMatches;
class QMessageBox;
class QCheckBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

/// Modeless search in the page shown. A search that reaches the end of the page asks whether the next one may
/// start from the other end. While the dialog is visible all matches are marked in the page.
class HelpFindDialog : public QDialog {
    Q_OBJECT

public:
    /// What is looked for and how.
    struct Search {
        QString text;
        bool wholeWords = false;
        bool caseSensitive = false;
        bool forward = true;
    };

    /// Takes the icon of the parent's window.
    HelpFindDialog(QWidget* parent, HelpBrowser* browser);

    [[nodiscard]] QString findText() const;
    void setFindText(const QString& text);
    [[nodiscard]] Search search() const;
    void setSearch(const Search& search);

    /// The next search starts from the current position.
    void resetFind();
    /// One search in the given direction; the dialog need not be visible. Nothing happens without a text.
    void findNext(bool forward);

Q_SIGNALS:
    /// The dialog has been closed.
    void done();

protected Q_SLOTS:
    virtual void slotFind();

public Q_SLOTS:
    void done(int result) override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void buildLayout();
    [[nodiscard]] QGridLayout* buildFields();
    [[nodiscard]] QGridLayout* buildButtons();
    void buildTabOrder();
    void connectMarks();

    void step(bool forward);
    bool findOn(bool forward);
    bool findFromOtherEnd(bool forward);
    void askRestart();
    void reportMissing();
    /// Whether the page is shown in part.
    [[nodiscard]] bool isBeginning() const;
    [[nodiscard]] QWidget* messageParent();
    [[nodiscard]] QString soughtText() const;
    [[nodiscard]] QTextDocument::FindFlags flags(bool forward) const;

    void pageChanged();
    void refreshMarks();
    void showCount();

    HelpBrowser* m_browser;
    bool m_restartAllowed = true;
    bool m_lastSearchFailed = false;
    QLineEdit* m_findEdit;
    QLabel* m_findLabel;
    QGroupBox* m_optionsGroup;
    QCheckBox* m_wholeWordsCheck;
    QCheckBox* m_caseSensitiveCheck;
    QGroupBox* m_directionGroup;
    QRadioButton* m_forwardRadio;
    QRadioButton* m_backwardRadio;
    QLabel* m_countLabel;
    QPushButton* m_findButton;
    QPushButton* m_closeButton;
    PageMatches* m_matches;
    QPointer<QMessageBox> m_message; ///< that waits for an answer
    QTimer m_refreshTimer;
};
