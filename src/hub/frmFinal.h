#pragma once

#include <QWidget>
#include <memory>

#include "patients/OpenedPatient.h"
#include "patients/PatientOnScreen.h"

class QTabWidget;

namespace Ui {
class frmFinal;
}
namespace toolkit {
class FlexGrid;
}

/// The patient hub: everything about one patient is reached from here. It reads only, and holds
/// nothing once it is closed. One hub serves one patient after the other.
class frmFinal final : public QWidget, public PatientOnScreen {
    Q_OBJECT
public:
    explicit frmFinal(QWidget* parent = nullptr);
    ~frmFinal() override;

    /// Takes this patient. The first one is checked for a closed account (one box) and has the
    /// request lists read, before the window is shown; for a later one everything of the patient
    /// before goes first, and the tab in sight loads as if it had just been shown.
    /// Throws base::RuntimeError; a list that could not be read is then empty.
    void Open(const OpenedPatient& patient);

    /// The number that the request lists are keyed on.
    void SetIdNum(const QString& idNum) { m_idNum = idNum; }
    /// In-patients only, else empty.
    const QString& RoomClassID() const { return m_roomClassId; }
    void SetRoomClassID(const QString& roomClassId);

    QString HospNum() const override;
    QString IdNum() const override;
    QString CAPDNum() const override;
    QString LastName() const override;
    QString FirstName() const override;
    QString MiddleName() const override;
    QString Age() const override;
    QString Sex() const override;
    QString Company() const override;

    void Get_CanPenProc() override;
    /// Read the Heart Station's and Rehab. Medicine's lists anew.
    void Get_HeartResults();
    void Get_PTResults();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SetKeys();
    void GoThrough(QTabWidget& tabs, int step);
    static void FocusList(const QTabWidget& tabs);
    void ShowHeader(const OpenedPatient& patient);
    void Load(int patientType);
    bool IsAccountClosed();
    void DisableActivity(const QString& why);
    void EmptyLists();
    void LayOutRequests(toolkit::FlexGrid& grid);
    void FillRequests(toolkit::FlexGrid& grid, const QString& requestType);
    void tabSSTab1_Click();
    void LoadShownTab();
    void cmdPostCharges_Click();

    std::unique_ptr<Ui::frmFinal> ui;
    QString m_idNum;
    QString m_roomClassId;
    bool m_loaded = false;
};
