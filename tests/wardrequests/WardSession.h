#pragma once

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "PluggedSession.h"
#include "TestHospital.h"
#include "components/builtin/clsCodeSearch.h"
#include "components/builtin/clsSupplies.h"
#include "db/Recordset.h"
#include "patients/PatientOnScreen.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"
#include "wardrequests/frmCSREntry.h"
#include "wardrequests/frmPHEntry.h"

using namespace Qt::StringLiterals;

/// A session on a demo hospital of its own, and a patient on screen whose visit has no requests.
class WardSession final : public PatientOnScreen {
public:
    WardSession() {
        using namespace modGlobals;
        PluggedDriver::Gone = false;
        Connection = std::make_shared<db::Connection>(
            std::make_unique<PluggedDriver>(m_hospital.ConnectionString()));
        Connection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        gCurrentUser = std::make_shared<SessionUser>(Connection);
        auto codes = std::make_shared<components::clsCodeSearch>();
        codes->Initialize_Classes();
        codes->SetSearchMode(true);
        codes->SetConnection(Connection);
        gCodeSearch = codes;
        gSupplyList = std::make_shared<components::clsListDrugs>();
        gSupplyList2 = std::make_shared<components::clsListDrugs>();
        gSupplyInfo = std::make_shared<components::clsDrug>();
        if (!gSupplyList->InitConnection(Connection) || !gSupplyList2->InitConnection(Connection) ||
            !gSupplyInfo->InitConnect(Connection))
            throw std::runtime_error("the catalogue cannot be reached");
    }

    /// A request of the patient's visit to the pharmacy, waiting or processed just now.
    void Request(const char* code, bool processed) const {
        Connection->Execute(
            u"INSERT INTO STATION..tbNurseLogBook (HospNum, IdNum, PatientType, "
            "ItemCode, Amount, Quantity, RequestDate, DeptID, RecordStatus, "
            "RequestedBy, Station, ProcessDate) VALUES ('7', 'A7B', 'O', '%1', 1, "
            "1, GETDATE(), 'PH', '%2', '4601', 'CAPD', %3)"_s.arg(
                QLatin1String(code), QLatin1String(processed ? "X" : " "),
                QLatin1String(processed ? "GETDATE()" : "NULL")));
    }
    int Requests() const {
        return Connection
            ->Execute(
                u"SELECT COUNT(*) FROM STATION..tbNurseLogBook WHERE IdNum = "
                "'A7B'"_s)
            ->Fields(0)
            .Text()
            .toInt();
    }

    QString HospNum() const override { return u"7"_s; }
    QString IdNum() const override { return Visit; }
    QString CAPDNum() const override { return {}; }
    QString LastName() const override { return u"O'HARA"_s; }
    QString FirstName() const override { return u"Ana"_s; }
    QString MiddleName() const override { return {}; }
    QString Age() const override { return {}; }
    QString Sex() const override { return {}; }
    QString Company() const override { return {}; }
    void Get_CanPenProc() override {
        ++Reloads;
        if (ReloadFails)
            throw base::DatabaseError(10054, u"The server is gone."_s);
    }

    std::shared_ptr<db::Connection> Connection;
    QString Visit = u"A7B"_s;
    int Reloads = 0;
    bool ReloadFails = false;

private:
    TestHospital m_hospital;
};

/// A request window on screen, with the keyboard in its entry box.
template <class Form>
struct WardWindow {
    Form Window;
    toolkit::FlexGrid& Grid;
    QLineEdit& Box;

    explicit WardWindow(PatientOnScreen& patient)
        : Window(patient),
          Grid(*Window.template findChild<toolkit::FlexGrid*>()),
          Box(*Window.template findChild<QLineEdit*>(u"txtEntry"_s)) {
        Window.show();
        if (!QTest::qWaitForWindowActive(&Window))
            qFatal("the window does not come to the front");
    }

    void Key(Qt::Key key) { QTest::keyClick(&Box, key); }
    /// Types an entry for each cell, each confirmed by Enter. "-" only confirms.
    void Enter(const QStringList& entries) {
        for (const QString& entry : entries) {
            if (entry != u"-"_s)
                QTest::keyClicks(&Box, entry);
            Key(Qt::Key_Return);
        }
    }
    void Press(int button) {
        Window.template findChild<QPushButton*>(u"cmdMedOption%1"_s.arg(button))->click();
    }
    QString Cell(int row, int col) const { return Grid.TextMatrix(row, col); }
    QString Line(int row) const {
        QStringList cells;
        for (int col = 0; col < Grid.Cols(); ++col)
            cells << Cell(row, col);
        return cells.join(u'|');
    }
    QPoint At() const { return {Grid.Row(), Grid.Col()}; }
    QString Prompt() const { return Window.template findChild<QLabel*>(u"lblMessage"_s)->text(); }
};
