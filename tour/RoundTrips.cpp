#include "tour/RoundTrips.h"

#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include "db/Connection.h"

using namespace Qt::StringLiterals;

namespace {

// What a step may send again, and why.
const QMap<QString, QString>& Repeats() {
    const auto eachPart =
        u"each part of a discount is asked for as the patient stands at that moment"_s;
    const auto eachLine = u"each line meets what the one before has left in the fund"_s;
    static const QMap<QString, QString> repeats{
        {u"BeginTrans"_s, u"a transaction inside of another counts"_s},
        {u"CommitTrans"_s, u"ends it"_s},
        {u"STATION..sp_Catalogue_Check"_s,
         u"each of the three catalogue components tries its connection"_s},
        {u"PATIENT_DATA..sp_Listing_Outpatient"_s,
         u"the list opens the patient, the hub looks whether the account has been "
         "closed meanwhile"_s},
        {u"BILLING..sp_Drug_Find"_s,
         u"a supply is looked for, then read with the code that the list gave"_s},
        {u"STATION..sp_Dosage_Find"_s, u"two lines with the same dosage"_s},
        {u"SELECT Hospnum from Patient_Data..tbOutPatient"_s, eachPart},
        {u"SELECT MSSClassification FROM PATIENT_DATA..tbMaster"_s, eachPart},
        {u"RADIOLOGY..spRadio_GetDiscountType"_s, eachPart},
        {u"RADIOLOGY..spRadio_GetDiscount"_s,
         u"for one unit when the item is known, then for the quantity"_s},
        {u"Billing..sp_Pars_CheckCompany"_s,
         u"the save decides who pays, the print which form is used"_s},
        {u"BILLING..sp_PDAF_GetBalance"_s,
         u"the save asks whether the fund is used up, its view what is left"_s},
        {u"BILLING..sp_PDAF_GetAllocation"_s, eachLine},
        {u"BILLING..sp_PDAF_GetAllocation_RegAccount"_s, eachLine},
        {u"BILLING..SP_PDAF_UpdateOPDRegistration"_s, u"after every share that is paid"_s},
    };
    return repeats;
}

// A procedure by its name, a statement by its beginning.
QString NameOf(const QString& command) {
    const QString first = command.section(u' ', 0, 0);
    return first.contains(u".."_s) ? first : command.section(u' ', 0, 3);
}

// The demo hospital's dates are counted back from today; log-ins name the station.
QString WithoutDayAndStation(QString command) {
    static const QRegularExpression date(
        u"\\d{1,2}/\\d{1,2}/\\d{4}( \\d{1,2}:\\d\\d(:\\d\\d)?( [AP]M)?)?|"
        "\\d{4}-\\d\\d-\\d\\d[ T]\\d\\d:\\d\\d:\\d\\d(\\.\\d+)?"_s);
    static const QRegularExpression station(u"(?<=sp_User_RecordLogin )(.*),'[^']*'$"_s);
    return command.replace(date, u"<date>"_s).replace(station, u"\\1,'<station>'"_s);
}

}  // namespace

RoundTrips::RoundTrips() {
    db::Connection::SetCommandHook([this](const QString& text) {
        if (!m_steps.empty() && !s_paused)
            m_steps.back().Sent << text;
    });
}

RoundTrips::~RoundTrips() {
    db::Connection::SetCommandHook({});
}

QString RoundTrips::Table() const {
    QString table =
        u"# Round trips\n\nWritten by the tour (`round-trips.md` in its folder): what each step "
        "of the demo day sends to the\nserver. \"Again\" counts commands that are, to the "
        "letter, the same as an earlier one of the step.\n\n"
        "| step | commands | again | which |\n|---|---|---|---|\n"_s;
    for (const OneStep& step : m_steps)
        if (!step.Sent.isEmpty())
            table += Row(step);
    table +=
        u"\nOnly these may be sent again within a step; any other makes the tour fail.\n\n"
        "| command | why |\n|---|---|\n"_s;
    for (auto repeat = Repeats().begin(); repeat != Repeats().end(); ++repeat)
        table += u"| `%1` | %2 |\n"_s.arg(repeat.key(), *repeat);
    return table;
}

QString RoundTrips::Commands() const {
    QString all =
        u"# Commands\n\nWritten by the tour (`commands.md` in its folder): what each step of the "
        "demo day sends to the\nserver, to the letter but for dates and times.\n"_s;
    for (const OneStep& step : m_steps) {
        if (step.Sent.isEmpty())
            continue;
        all += u"\n## %1\n\n"_s.arg(step.Name);
        for (const QString& command : step.Sent)
            all += u"    "_s + WithoutDayAndStation(command) + u'\n';
    }
    return all;
}

QStringList RoundTrips::NeedlesslyRepeated() const {
    QStringList repeated;
    for (const OneStep& step : m_steps) {
        QSet<QString> sent;
        for (const QString& command : step.Sent) {
            if (sent.contains(command) && !Repeats().contains(NameOf(command)))
                repeated << step.Name + u": "_s + command;
            sent.insert(command);
        }
    }
    return repeated;
}

// Neighbours that are equal stand as one.
QString RoundTrips::Row(const OneStep& step) {
    QStringList names;
    int times = 0;
    const auto close = [&] {
        if (times > 1)
            names.last() += u" (%1)"_s.arg(times);
    };
    for (const QString& command : step.Sent) {
        const QString name = u'`' + NameOf(command) + u'`';
        if (!names.isEmpty() && names.last() == name) {
            ++times;
            continue;
        }
        close();
        times = 1;
        names << name;
    }
    close();
    QStringList once = step.Sent;
    once.removeDuplicates();
    return u"| %1 | %2 | %3 | %4 |\n"_s.arg(step.Name)
        .arg(step.Sent.size())
        .arg(step.Sent.size() - once.size())
        .arg(names.join(u", "_s));
}
