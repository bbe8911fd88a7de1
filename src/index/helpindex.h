// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class HelpIndexListBox;
class HelpLibrary;
class QLabel;
class QLineEdit;
struct HelpIndexItem;

/// The index pane: the keywords of all loaded help sets with a field that looks them up. The library must
/// outlive it.
class HelpIndex : public QWidget {
    Q_OBJECT

public:
    HelpIndex(HelpLibrary& library, QWidget* parent);

    /// Selects the text of the look-for field, so that typing replaces it.
    void selectLookFor();

Q_SIGNALS:
    /// The user wants what this entry leads to; null: no page at all.
    void pageRequested(const HelpIndexItem* item);
    void linkHovered(const QString& page);

protected Q_SLOTS:
    virtual void lookForTextChanged(const QString& str);
    virtual void lookForEnterPressed();
    virtual void indexClicked(int row);
    virtual void indexEnterPressed(int row);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] HelpIndexItem* itemAt(int row) const;
    void setCurrentRow(int row);

    HelpLibrary& m_library;
    QLabel* m_lookForLabel;
    QLineEdit* m_lookForEdit;
    HelpIndexListBox* m_indexListBox;
};
