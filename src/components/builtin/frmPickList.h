#pragma once

#include <QDialog>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "components/builtin/PickListDelegate.h"
#include "db/Connection.h"
#include "toolkit/ListView.h"

namespace Ui {
class frmPickList;
}

namespace components {

/// What a pick list shows and how it searches.
struct PickListSetup {
    QString Title;
    QString Heading;
    std::vector<toolkit::ListColumn> Columns;
    /// The result column that is handed back.
    QString CodeField;
    /// The command that answers a typed text.
    std::function<QString(const QString& text)> Command;
    /// By result column, the columns that are not plain text.
    std::map<QString, PickListLook> Looks = {};
};

/// A list to choose one row from: typing narrows it and marks the first row, Down goes to the rows
/// and Up from the first one back, Enter takes the marked one. Without a text none is marked.
class frmPickList final : public QDialog {
    Q_OBJECT
public:
    frmPickList(PickListSetup setup, std::shared_ptr<db::Connection> connection,
                QWidget* parent = nullptr);
    ~frmPickList() override;

    /// Shows the list narrowed by the text; the chosen code, empty when nothing was chosen.
    /// `found`: the rows of that text, where they have been read already.
    QString Pick(const QString& text, std::shared_ptr<const db::RowStore> found = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowLooks();
    void Search();
    void Show(std::shared_ptr<const db::RowStore> rows);
    void ShowChoice();
    void cmdSelect_Click();

    std::unique_ptr<Ui::frmPickList> ui;
    PickListSetup m_setup;
    std::shared_ptr<db::Connection> m_connection;
    std::shared_ptr<const db::RowStore> m_rows;
    toolkit::RowListModel m_model;
    QString m_code;
};

}  // namespace components
