#pragma once

#include <QDialog>
#include <memory>

class QKeyEvent;

namespace Ui {
class frmSearch;
}

/// A list of codes to pick one from, for whoever has a command that searches them: typing narrows
/// the list and marks its first row, Enter picks the marked row, whose second column is the answer.
/// Without a text none is marked. Set SearchCaption, Criteria and Query,
/// call exec(), then read Valid and ResultCode.
class frmSearch final : public QDialog {
    Q_OBJECT
public:
    explicit frmSearch(QWidget* parent = nullptr);
    ~frmSearch() override;

    /// The program's one window of this kind, made at first use.
    static frmSearch& Shared();

    void SetSearchCaption(const QString& caption) { m_caption = caption; }
    /// The text that the list is first narrowed by.
    void SetCriteria(const QString& criteria) { m_criteria = criteria; }
    /// The command; "##" stands for the search text, inside the command's own quotes.
    void SetQuery(const QString& query) { m_query = query; }

    /// True when a row was picked, false when the window was left in any other way.
    bool Valid() const { return m_valid; }
    /// The code last picked; stays until the next pick.
    const QString& ResultCode() const { return m_resultCode; }

    /// Loads the list and shows the window until it is left. Throws base::DatabaseError, and shows
    /// nothing, when the first search fails.
    int exec() override;
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Load();
    void SetColumnWidths();
    void Search();
    void ShowInBox(const QString& text);
    void ShowChoice();
    bool SearchBoxKey(const QKeyEvent& key);
    void txtSearchStr_Change(const QString& text);
    void grdDispWindow_RowColChange(int row);
    void cmdSelect_Click();

    std::unique_ptr<Ui::frmSearch> ui;
    QString m_caption;
    QString m_criteria;
    QString m_query;
    QString m_resultCode;
    bool m_valid = false;
};
