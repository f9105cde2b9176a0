#include "patients/PdFields.h"

#include <QButtonGroup>
#include <array>

#include "base/Clock.h"
#include "base/Dates.h"
#include "deploy/ColumnLengths.h"
#include "toolkit/MsgBox.h"
#include "ui_PdFields.h"

namespace {

template <class Box>
struct Field {
    Box* Ui::PdFields::*Control;
    const char16_t* Column;
    int Argument;
};

// Sheet and log book call their columns by the same names; arguments are counted from 1.
constexpr std::array<Field<QLineEdit>, 9> kTexts{{
    {&Ui::PdFields::txtDiagnosis, u"Diagnosis", 7},
    {&Ui::PdFields::txtWeight, u"Weight", 12},
    {&Ui::PdFields::txtDiet, u"Diet", 14},
    {&Ui::PdFields::txtBloodPressure, u"BP", 15},
    {&Ui::PdFields::txtFluidRestriction, u"FluidRestriction", 16},
    {&Ui::PdFields::txtBloodType, u"BloodType", 18},
    {&Ui::PdFields::txtHBsAg, u"HBsAg", 19},
    {&Ui::PdFields::txtNewdialysis, u"Dialysis", 20},
    {&Ui::PdFields::txtReson, u"ShiftReason", 21},
}};
constexpr std::array<Field<toolkit::DateEdit>, 6> kDates{{
    {&Ui::PdFields::dtAcutePDStart, u"AcutePDStartDate", 8},
    {&Ui::PdFields::dtChronicPDStart, u"ChronicPDStartDate", 9},
    {&Ui::PdFields::dtShifted, u"DialysisShiftDate", 17},
    {&Ui::PdFields::dtShiftedBack, u"ShiftBackDate", 22},
    {&Ui::PdFields::dtTransplant, u"TransplantDate", 23},
    {&Ui::PdFields::dtRejected, u"RejectionDate", 24},
}};
/// What comes second cannot have been before what comes first.
struct Order {
    toolkit::DateEdit* Ui::PdFields::*First;
    toolkit::DateEdit* Ui::PdFields::*Second;
};
constexpr std::array<Order, 2> kOrders{{
    {&Ui::PdFields::dtShifted, &Ui::PdFields::dtShiftedBack},
    {&Ui::PdFields::dtTransplant, &Ui::PdFields::dtRejected},
}};
constexpr int kChronicPDArgument = 10, kCatheterArgument = 11, kRemarksArgument = 25;
const QString kRemarks = QStringLiteral("Remarks");

template <class Box>
QString ColumnOf(const Field<Box>& field) {
    return QString::fromUtf16(field.Column);
}

QString Caption(const QButtonGroup& group) {
    return group.checkedButton() ? group.checkedButton()->text() : QString();
}

}  // namespace

PdFields::PdFields(QWidget* parent) : QWidget(parent), ui(std::make_unique<Ui::PdFields>()) {
    ui->setupUi(this);
    for (const auto& field : kDates)
        ((*ui).*field.Control)->SetForPast();
}

PdFields::~PdFields() = default;

void PdFields::SetCatheters(const QStringList& captions) {
    for (int option = 0; option < captions.size(); ++option)
        ui->optCatheter->buttons().at(option)->setText(captions[option]);
}

void PdFields::LimitTo(const QString& table) {
    for (const auto& field : kTexts)
        ((*ui).*field.Control)->setMaxLength(deploy::ColumnLength(table, ColumnOf(field)));
    ui->txtComments->SetMaxLength(deploy::ColumnLength(table, kRemarks));
}

void PdFields::Load(db::Recordset& row) {
    for (const auto& field : kTexts)
        ((*ui).*field.Control)->setText(row.Fields(ColumnOf(field)).Text());
    for (const auto& field : kDates)
        ((*ui).*field.Control)->setDate(row.Fields(ColumnOf(field)).Value().Moment().date());
    ui->txtComments->setPlainText(row.Fields(kRemarks).Text());
}

void PdFields::ChoosePurpose(const QString& purpose) {
    for (QAbstractButton* option : ui->optPurpose->buttons())
        if (!purpose.trimmed().isEmpty() && option->text().trimmed()[0] == purpose.trimmed()[0])
            option->setChecked(true);
}

QString PdFields::ChronicPD() const {
    return Caption(*ui->optChronicPD);
}

QString PdFields::Purpose() const {
    return Caption(*ui->optPurpose);
}

void PdFields::PutInto(QStringList& arguments) const {
    for (const auto& field : kTexts)
        arguments[field.Argument - 1] = ((*ui).*field.Control)->text();
    for (const auto& field : kDates)
        arguments[field.Argument - 1] = base::ShortDate(((*ui).*field.Control)->date());
    arguments[kChronicPDArgument - 1] = ChronicPD();
    arguments[kCatheterArgument - 1] = Caption(*ui->optCatheter);
    arguments[kRemarksArgument - 1] = ui->txtComments->toPlainText();
}

bool PdFields::IsEmpty() const {
    QStringList arguments(kRemarksArgument, QString());
    PutInto(arguments);
    return arguments.join(QString()).trimmed().isEmpty() && Purpose().isEmpty();
}

bool PdFields::AskAbout(toolkit::DateEdit& box, const QString& doubt) {
    const bool meant =
        toolkit::MsgBox(QStringLiteral("%1, %2, is %3.\n\nSave it all the same?")
                            .arg(box.accessibleName(), base::ShortDate(box.date()), doubt),
                        toolkit::BoxIcon::Exclamation, QStringLiteral("Message"),
                        toolkit::BoxButtons::YesNo) == toolkit::BoxAnswer::Yes;
    if (!meant)
        box.setFocus(Qt::TabFocusReason);
    return meant;
}

bool PdFields::DatesAreMeant() {
    for (const auto& field : kDates) {
        toolkit::DateEdit* box = (*ui).*field.Control;
        if (!box->IsUnreadable())
            continue;
        toolkit::MsgBox(QStringLiteral("%1: there is no date %2.")
                            .arg(box->accessibleName(), box->text().trimmed()),
                        toolkit::BoxIcon::Information, QStringLiteral("Message"));
        box->setFocus(Qt::TabFocusReason);
        return false;
    }
    for (const auto& field : kDates) {
        toolkit::DateEdit* box = (*ui).*field.Control;
        if (box->date() > base::Clock::Today() && !AskAbout(*box, QStringLiteral("after today")))
            return false;
    }
    for (const Order& order : kOrders) {
        const toolkit::DateEdit* first = (*ui).*order.First;
        toolkit::DateEdit* second = (*ui).*order.Second;
        if (second->date().isValid() && second->date() < first->date() &&
            !AskAbout(*second, QStringLiteral("before %1, %2")
                                   .arg(first->accessibleName(), base::ShortDate(first->date()))))
            return false;
    }
    return true;
}

std::vector<QWidget*> PdFields::EntryOrder() const {
    return {ui->txtDiagnosis,     ui->dtAcutePDStart,      ui->dtChronicPDStart, ui->optChronicPD0,
            ui->optCatheter0,     ui->optPurpose0,         ui->txtWeight,        ui->txtDiet,
            ui->txtBloodPressure, ui->txtFluidRestriction, ui->txtBloodType,     ui->txtHBsAg,
            ui->dtShifted,        ui->txtNewdialysis,      ui->txtReson,         ui->dtShiftedBack,
            ui->dtTransplant,     ui->dtRejected,          ui->txtComments};
}
