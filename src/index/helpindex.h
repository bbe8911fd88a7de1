// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class HelpIndexListBox;
class HelpIndexModel;
class HelpLibrary;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
struct HelpContentsRoot;
struct HelpIndexItem;

/// The index pane: the keywords of all loaded help sets with a field that looks them up. When no keyword
/// begins with what was typed, the list shows those that contain it. The library must outlive it.
class HelpIndex : public QWidget {
    Q_OBJECT

public:
    HelpIndex(HelpLibrary& library, QWidget* parent);

    /// Selects the text of the look-for field, so that typing replaces it.
    void selectLookFor();
    /// Asks for the page of this entry; of several topics that its row has the user chooses one.
    void open(const HelpIndexItem& item);
    /// The page that is read and its help set; null for none.
    void setInUse(const HelpContentsRoot* root, const QString& page);

Q_SIGNALS:
    /// The user wants what this entry leads to; null: no page at all.
    void pageRequested(const HelpIndexItem* item);
    void linkHovered(const QString& page);
    /// The user wants to search all pages for this.
    void searchRequested(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildLayout();
    void connectParts();
    void lookForTextChanged(const QString& str);
    void lookForEnterPressed();
    void indexClicked(int row);
    void indexEnterPressed(int row);
    [[nodiscard]] HelpIndexItem* itemAt(int row) const;
    void setCurrentRow(int row);
    /// The only help set whose keywords are wanted; null for all.
    [[nodiscard]] const HelpContentsRoot* only() const;
    void showAllRows();
    void showRowsContaining(const QString& text);
    void setNote(const QString& note);
    void showScope();

    HelpLibrary& m_library;
    QLabel* m_lookForLabel;
    QLineEdit* m_lookForEdit;
    QComboBox* m_scope;
    QLabel* m_note;
    QPushButton* m_searchButton;
    HelpIndexListBox* m_indexListBox;
    HelpIndexModel* m_model;
    const HelpContentsRoot* m_inUse = nullptr;
    QString m_page; ///< that is read
};
