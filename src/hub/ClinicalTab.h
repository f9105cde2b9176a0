#pragma once

#include <QWidget>
#include <memory>

class PatientOnScreen;
namespace components {
struct PersonRecord;
}
namespace print {
class ReportPages;
}

namespace Ui {
class ClinicalTab;
}

/// The hub's tab with who the patient is, the patient's stays, and the clinical summary of the
/// stay that is chosen.
class ClinicalTab final : public QWidget {
    Q_OBJECT
public:
    explicit ClinicalTab(QWidget* parent = nullptr);
    ~ClinicalTab() override;

    /// Whose tab it is; must live as long as the tab.
    void SetPatient(const PatientOnScreen& patient) { m_patient = &patient; }
    /// Shows nothing of anybody.
    void Empty();
    /// Reads the patient's particulars and stays anew. Throws base::RuntimeError; what could not
    /// be read is then empty.
    void LoadClinicalTab();

signals:
    void ExitRequested();

private:
    void ShowPatient(const components::PersonRecord& patient);
    void ShowStays(const QString& admissionDate);
    void cmdClinical_View();
    std::shared_ptr<const print::ReportPages> Pages() const;
    QString Title() const;
    void ShowState();

    std::unique_ptr<Ui::ClinicalTab> ui;
    const PatientOnScreen* m_patient = nullptr;
    QString m_number;  ///< of the stay whose summary is shown
    bool m_isComposing = false;
};
