#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmPatientListing;
}

/// A list of registered patients to pick one from: by the beginning of a last name or of an
/// admission number. Set the inputs, call exec(), then read Valid and ResultCode.
class frmPatientListing final : public QDialog {
    Q_OBJECT
public:
    /// Over the window that is active now.
    frmPatientListing();
    ~frmPatientListing() override;

    void SetListCaption(const QString& caption) { m_caption = caption; }
    /// The text that the list is first searched by.
    void SetPatientRecord(const QString& text) { m_record = text; }
    /// The command: "#1" stands for the check box (0 or 1), "#2" for what is searched by (0 last
    /// name, 1 admission number), "#3" for the search text, inside the command's own quotes.
    void SetPatientQuery(const QString& query) { m_query = query; }
    /// Of the check box; an empty one hides it.
    void SetCurrentCaption(const QString& caption) { m_currentCaption = caption; }
    void SetEnableAddPatient(bool enable) { m_enableAddPatient = enable; }

    /// True when a row was picked, false when the window was left in any other way.
    bool Valid() const { return m_valid; }
    /// The picked row's first column: the hospital number.
    const QString& ResultCode() const { return m_resultCode; }

    /// Loads the list and shows the window until it is left. Throws base::DatabaseError, and shows
    /// nothing, when the first search fails.
    int exec() override;

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Load();
    QString spPatientList(const QString& current, const QString& searchBy,
                          const QString& text) const;
    void List();
    void FormatGrid();
    void cmdSelect_Click();

    std::unique_ptr<Ui::frmPatientListing> ui;
    QString m_caption;
    QString m_record;
    QString m_query;
    QString m_currentCaption;
    QString m_resultCode;
    bool m_enableAddPatient = false;
    bool m_hasRows = false;
    bool m_valid = false;
};
