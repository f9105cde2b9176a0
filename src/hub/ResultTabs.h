#pragma once

#include <QTabWidget>
#include <vector>

#include "patients/PatientOnScreen.h"

class ResultPage;

/// The results of the other departments, one tab each. A list is read once for each choice of a
/// patient, when its tab is first shown; what belongs to the patient before goes at once.
class ResultTabs final : public QTabWidget {
    Q_OBJECT
public:
    enum Tab { Xray, Ultrasound, HeartStation, Laboratory, CtScan, Rehabilitation, Nuclear };

    explicit ResultTabs(QWidget* parent = nullptr);

    /// Empties every list and takes this patient, who must live as long as the tabs. The room
    /// stands in the laboratory's results.
    void TakePatient(const PatientOnScreen& patient, const QString& room);
    /// Reads the shown tab's list where its load flag is raised, and lowers the flag. Throws
    /// base::DatabaseError; the flag is then still raised.
    void LoadShown();
    /// Reads a tab's list, whatever its flag says.
    void Load(Tab tab);

signals:
    void ExitPressed();

private:
    bool& NeedsLoad(int tab);
    void cmdLabView_Click();
    void cmdHeartPrint_Click();

    std::vector<ResultPage*> m_pages;
    const PatientOnScreen* m_patient = nullptr;
    QString m_room;
    /// The Rehab. Medicine tab's load flag, which the session does not hold.
    bool m_ptNeedsLoad = false;
};
