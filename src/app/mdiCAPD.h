#pragma once

#include <QMainWindow>
#include <QPointer>
#include <memory>

namespace Ui {
class mdiCAPD;
}
class QDialog;
class QLabel;
class QMdiSubWindow;
class frmFinal;
class frmPatientList;
struct OpenedPatient;
namespace components {
struct ListedPatient;
}
namespace toolkit {
class Busy;
}

/// The main frame: the patient search as its child, the menus and the toolbar of the unit.
class mdiCAPD final : public QMainWindow {
    Q_OBJECT
public:
    mdiCAPD();
    ~mdiCAPD() override;

    /// Opens the patient search and connects the supply catalogue; closes the frame, after a
    /// message, where that cannot be reached. Throws base::RuntimeError: a frame that could not
    /// load is of no use.
    void Load();

    frmPatientList& PatientList() { return *m_patientList; }

    /// The registration sheet of the patient chosen in the search.
    void NewRegistration();
    /// Today's visit of the patient chosen in the search; refused without a CAPD number.
    void RegisterVisit();
    /// "New" and "Assessment", in any spelling of case; any other key does nothing.
    void Toolbar1_ButtonClick(const QString& key);

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool ConnectSupplyCatalogue();
    void ShowPatientList();
    void ShowChosenPatient();
    void FitChildren();
    void ShowHub(frmFinal* hub);
    void ReturnToPatientList();
    /// Between the patient list and the open hub.
    void SwitchChild();
    void FocusPatientList();
    /// A word in red in the status bar, for as long as the program runs.
    void AddWarning(const QString& name, const QString& text);
    void AddToolButton(const QString& key, const QAction* twin, const QIcon& icon);
    bool IsMenuShortcut(const QKeySequence& keys) const;
    /// False, told in the status bar, where the number is unknown or nobody was picked.
    bool ListPatient(QString& idNum);
    /// Asks when the hub in front shows another patient than the one chosen in the list.
    bool IsMeant(const components::ListedPatient& chosen) const;
    void PatientOpened(const OpenedPatient& patient);
    void ShowModal(QDialog* sheet);
    /// Says that another program holds the hospital file, until its turn is over.
    void ShowWaiting(bool waiting);

    std::unique_ptr<Ui::mdiCAPD> ui;
    QString m_chosenName;
    QString m_chosenNumbers;
    QLabel* m_lblChosenPatient;
    frmPatientList* m_patientList = nullptr;
    QMdiSubWindow* m_patientListFrame = nullptr;
    QPointer<frmFinal> m_hub;
    QPointer<QMdiSubWindow> m_hubFrame;
    bool m_unloading = false;
    std::unique_ptr<toolkit::Busy> m_waiting;
    QString m_textBeforeWaiting;
};
