#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmAssessmentStatus;
}
namespace toolkit {
class RowListModel;
}
enum class AssessmentState;

/// The cash assessments of walk-in patients: which are paid; revokes the others and prints the
/// slips anew. Shown modal.
class frmAssessmentStatus final : public QDialog {
    Q_OBJECT
public:
    explicit frmAssessmentStatus(QWidget* parent = nullptr);
    ~frmAssessmentStatus() override;

    /// Loads at the first showing. Throws base::DatabaseError and shows nothing when that fails.
    void setVisible(bool visible) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Load(const QString& searchText);
    /// The shown row that is chosen; nothing, after a message, where there is none.
    int ChosenRow() const;
    QString Cell(int row, int column) const;
    /// Shows all lines of the assessment in the state that they are in now.
    void ShowState(const QString& refNum, AssessmentState state);
    void btnCancel_Click();
    void btnPrint_Click();

    std::unique_ptr<Ui::frmAssessmentStatus> ui;
    toolkit::RowListModel* m_lines;
    bool m_loaded = false;
};
