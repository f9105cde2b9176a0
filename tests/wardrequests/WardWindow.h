#pragma once

#include "ScreenPatient.h"
#include "WindowTest.h"
#include "wardrequests/frmCSREntry.h"
#include "wardrequests/frmPHEntry.h"

/// A request window on screen, with the keyboard in its entry box.
template <class Form>
struct WardWindow {
    Form Window;
    toolkit::FlexGrid& Grid;
    QLineEdit& Box;

    explicit WardWindow(PatientOnScreen& patient)
        : Window(patient),
          Grid(Find<toolkit::FlexGrid>(Window)),
          Box(Find<QLineEdit>(Window, "txtEntry")) {
        BringUp(Window);
    }

    void Key(Qt::Key key) { QTest::keyClick(&Box, key); }
    /// Types an entry for each cell, divided by blanks, each confirmed by Enter. "-" only confirms,
    /// and "_" stands for a blank.
    void Enter(const QString& entries) {
        for (QString entry : entries.split(u' ')) {
            if (entry != u"-")
                QTest::keyClicks(&Box, entry.replace(u'_', u' '));
            Key(Qt::Key_Return);
        }
    }
    void Press(const char* button) { Click(Window, button); }
    QString Cell(int row, int col) const { return Grid.TextMatrix(row, col); }
    QString Line(int row) const { return LineOf(Grid, row); }
    QPoint At() const { return CellOf(Grid); }
};

/// Of a request window over the patient of visit A7B, which has no requests.
class WardTest : public WindowTest {
protected:
    using Pharmacy = WardWindow<frmPHEntry>;
    using Supplies = WardWindow<frmCSREntry>;

    static constexpr char kSave[] = "cmdMedOption0";
    static constexpr char kCancel[] = "cmdMedOption1";
    static constexpr char kDelete[] = "cmdMedOption2";

    /// Begins with the pharmacy's sheet open.
    void Open() {
        SetUp();
        m_patient = ScreenPatient(u"A7B"_s, u"7"_s);
        m_window = std::make_unique<Pharmacy>(m_patient);
    }
    void Close() {
        m_window.reset();
        TearDown();
    }

    /// A request of the visit to the pharmacy, waiting or processed just now.
    static void Request(const char* code, bool processed) {
        Do(u"INSERT INTO STATION..tbNurseLogBook (HospNum, IdNum, PatientType, ItemCode, Amount, "
           "Quantity, RequestDate, DeptID, RecordStatus, RequestedBy, Station, ProcessDate) VALUES "
           "('7', 'A7B', 'O', '%1', 1, 1, GETDATE(), 'PH', '%2', '4601', 'CAPD', %3)"_s.arg(
               QLatin1String(code), QLatin1String(processed ? "X" : " "),
               QLatin1String(processed ? "GETDATE()" : "NULL")));
    }
    static int Requests() {
        return Ask(u"SELECT COUNT(*) FROM STATION..tbNurseLogBook WHERE IdNum = 'A7B'"_s).toInt();
    }

    ScreenPatient m_patient{u"A7B"_s, u"7"_s};
    std::unique_ptr<Pharmacy> m_window;
};
