#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

#include "patients/PatientOnScreen.h"
#include "session/modGlobals.h"

namespace db {
class Recordset;
}

/// A caption of a result's details, and the columns of the list that its value is read from: one,
/// or a doctor's last, first and middle name. None: not filled.
struct ResultDetail {
    QString Caption;
    QString Label;
    QList<int> Columns;
};

/// A box that a result is read in: a column of the list, or fields of its record, each under its
/// title where there are several.
struct ResultBox {
    QString Caption;
    QString Name;
    int Column = 0;
    QStringList Fields;
};

enum class ResultPrint { None, Report, Never };

/// One department's tab: where its list comes from and how it looks. The differences between the
/// seven tabs, and nothing else.
struct ResultKind {
    QString Name;  ///< as in the names of the tab's controls
    QString Caption;
    /// The session's load flag; none for the tab whose flag the hub holds itself.
    std::optional<modGlobals::HubTab> Flag;
    /// Opens the list's recordset; null for a department that answers nothing.
    std::shared_ptr<db::Recordset> (*Open)(const PatientOnScreen& patient) = nullptr;
    /// Shows the record's columns as they come, headed by their names.
    bool IsBound = false;
    int Columns = 0;
    QString Layout;
    /// Twips of the columns after the anchor.
    std::vector<int> Widths;
    QStringList Fields;
    /// Where the list says when a result was released; a result without it is not to be printed.
    int ReleaseColumn = 4;
    std::vector<ResultDetail> Details;
    std::vector<ResultBox> Boxes;
    bool HasView = false;
    ResultPrint Print = ResultPrint::None;
    bool HasMnemonics = false;
};

/// The tabs in their order.
const std::vector<ResultKind>& ResultKinds();

/// The patient's laboratory examinations, once more; as the laboratory tab's list.
std::shared_ptr<db::Recordset> OpenLaboratoryList(const PatientOnScreen& patient, int cursorType);
