// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class HelpLibrary;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
struct HelpContentsRoot;
struct HelpIndexItem;

/// Lets the user choose among the topics of one keyword.
class HelpIndexFound : public QDialog {
    Q_OBJECT

public:
    /// The distinct entries of one group of the library's keyword index.
    HelpIndexFound(const HelpLibrary& library, int group, QWidget* parent);

    /// Makes a topic current that one has not read already, in the help set in use if it has one.
    void prefer(const HelpContentsRoot* inUse, const QString& page);
    /// Entry of the current row; null when there is none.
    [[nodiscard]] HelpIndexItem* getIndex() const;

private:
    void buildLayout();
    void addTopics(const HelpLibrary& library);
    void fitColumns();
    void filter(const QString& text);

    QLabel* m_promptLabel;
    QLineEdit* m_filterEdit;
    QTreeWidget* m_topicList;
    QPushButton* m_showButton;
    QPushButton* m_cancelButton;
    std::vector<HelpIndexItem*> m_items;
};
