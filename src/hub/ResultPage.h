#pragma once

#include <QWidget>
#include <vector>

#include "hub/ResultKinds.h"

class QGridLayout;
class QHBoxLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;
namespace toolkit {
class FlexGrid;
}

/// One department's list with the details of the chosen result.
class ResultPage final : public QWidget {
    Q_OBJECT
public:
    explicit ResultPage(const ResultKind& kind, QWidget* parent = nullptr);

    /// An empty list under its headers, nothing of any result.
    void Empty();
    /// Reads the list anew and shows its first result. Throws base::DatabaseError, and the list is
    /// then empty and says that it could not be read.
    void Load(const PatientOnScreen& patient);

    const ResultKind& Kind() const { return m_kind; }
    const toolkit::FlexGrid& Grid() const { return *m_grid; }
    /// The first column of the result whose details are shown; empty where none is.
    const QString& ShownResult() const { return m_shownResult; }

signals:
    void RefreshPressed();
    void ExitPressed();
    /// The chosen laboratory row is to be opened.
    void ViewPressed();
    void PrintPressed();

private:
    void AddDetails(QGridLayout& layout);
    QPushButton* AddButton(QHBoxLayout& layout, const QString& text, const QString& name);
    void AddButtons(QHBoxLayout& layout);
    void LeaveRoom();
    void ClearDetails();
    void ShowResultDetail(int row);
    QString DetailText(const ResultDetail& detail, int row) const;
    QString BoxText(const ResultBox& box, int row) const;
    bool HasResults() const;
    void grid_RowOpened(int row);

    const ResultKind& m_kind;
    toolkit::FlexGrid* m_grid;
    std::vector<QLabel*> m_details;
    std::vector<QPlainTextEdit*> m_boxes;
    QLabel* m_state;
    QPushButton* m_view = nullptr;
    QPushButton* m_print = nullptr;
    QString m_shownResult;
};
