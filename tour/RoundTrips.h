#pragma once

#include <QFile>
#include <QMap>
#include <QSet>
#include <QStringList>
#include <vector>

#include "db/Connection.h"

/// What each step of the day sends to the server, as a table for docs/round-trips.md.
class RoundTrips final {
public:
    RoundTrips() {
        db::Connection::SetCommandHook([this](const QString& text) {
            if (!m_steps.empty() && !s_paused)
                m_steps.back().Sent << text;
        });
    }
    ~RoundTrips() { db::Connection::SetCommandHook({}); }
    RoundTrips(const RoundTrips&) = delete;
    RoundTrips& operator=(const RoundTrips&) = delete;

    void Begin(const QString& step) { m_steps.push_back({step, {}}); }

    /// While it lives, nothing is noted: for what the tour itself wants to know.
    struct Pause {
        Pause() { s_paused = true; }
        ~Pause() { s_paused = false; }
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
    };

    bool Write(const QString& path) const {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return false;
        file.write(
            "# Round trips\n\nWritten by the tour (`round-trips.md` in its folder): what each step "
            "of the demo day sends to the\nserver. \"Again\" counts commands that are, to the "
            "letter, the same as an earlier one of the step.\n\n"
            "| step | commands | again | which |\n|---|---|---|---|\n");
        for (const OneStep& step : m_steps)
            if (!step.Sent.isEmpty())
                file.write(Row(step).toUtf8());
        file.write(
            "\nOnly these may be sent again within a step; any other makes the tour fail.\n\n"
            "| command | why |\n|---|---|\n");
        for (auto repeat = Repeats().begin(); repeat != Repeats().end(); ++repeat)
            file.write(QStringLiteral("| `%1` | %2 |\n").arg(repeat.key(), *repeat).toUtf8());
        return true;
    }

    /// What a step sent again without being asked to, a line each.
    QStringList NeedlesslyRepeated() const {
        QStringList repeated;
        for (const OneStep& step : m_steps) {
            QSet<QString> sent;
            for (const QString& command : step.Sent) {
                if (sent.contains(command) && !Repeats().contains(NameOf(command)))
                    repeated << step.Name + QStringLiteral(": ") + command;
                sent.insert(command);
            }
        }
        return repeated;
    }

private:
    struct OneStep {
        QString Name;
        QStringList Sent;
    };

    /// A procedure by its name, a statement by its beginning.
    static QString NameOf(const QString& command) {
        const QString first = command.section(u' ', 0, 0);
        return first.contains(QStringLiteral("..")) ? first : command.section(u' ', 0, 3);
    }

    /// Neighbours that are equal as one.
    static QString Row(const OneStep& step) {
        QStringList names;
        int times = 0;
        const auto close = [&] {
            if (times > 1)
                names.last() += QStringLiteral(" (%1)").arg(times);
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
        return QStringLiteral("| %1 | %2 | %3 | %4 |\n")
            .arg(step.Name)
            .arg(step.Sent.size())
            .arg(step.Sent.size() - once.size())
            .arg(names.join(QStringLiteral(", ")));
    }

    /// What a step may send again, and why.
    static const QMap<QString, QString>& Repeats() {
        const auto eachPart = QStringLiteral(
            "each part of a discount is asked for as the patient stands at that moment");
        const auto eachLine =
            QStringLiteral("each line meets what the one before has left in the fund");
        static const QMap<QString, QString> repeats{
            {QStringLiteral("BeginTrans"),
             QStringLiteral("a transaction inside of another counts")},
            {QStringLiteral("CommitTrans"), QStringLiteral("ends it")},
            {QStringLiteral("STATION..sp_Catalogue_Check"),
             QStringLiteral("each of the three catalogue components tries its connection")},
            {QStringLiteral("PATIENT_DATA..sp_Listing_Outpatient"),
             QStringLiteral(
                 "the list opens the patient, the hub looks whether the account has been "
                 "closed meanwhile")},
            {QStringLiteral("BILLING..sp_Drug_Find"),
             QStringLiteral("a supply is looked for, then read with the code that the list gave")},
            {QStringLiteral("STATION..sp_Dosage_Find"),
             QStringLiteral("two lines with the same dosage")},
            {QStringLiteral("SELECT Hospnum from Patient_Data..tbOutPatient"), eachPart},
            {QStringLiteral("SELECT MSSClassification FROM PATIENT_DATA..tbMaster"), eachPart},
            {QStringLiteral("RADIOLOGY..spRadio_GetDiscountType"), eachPart},
            {QStringLiteral("RADIOLOGY..spRadio_GetDiscount"),
             QStringLiteral("for one unit when the item is known, then for the quantity")},
            {QStringLiteral("Billing..sp_Pars_CheckCompany"),
             QStringLiteral("the save decides who pays, the print which form is used")},
            {QStringLiteral("BILLING..sp_PDAF_GetBalance"),
             QStringLiteral("the save asks whether the fund is used up, its view what is left")},
            {QStringLiteral("BILLING..sp_PDAF_GetAllocation"), eachLine},
            {QStringLiteral("BILLING..sp_PDAF_GetAllocation_RegAccount"), eachLine},
            {QStringLiteral("BILLING..SP_PDAF_UpdateOPDRegistration"),
             QStringLiteral("after every share that is paid")},
        };
        return repeats;
    }

    std::vector<OneStep> m_steps;
    static inline bool s_paused = false;
};
