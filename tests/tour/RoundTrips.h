#pragma once

#include <QFile>
#include <QStringList>
#include <vector>

#include "db/Connection.h"

/// What each step of the day sends to the server, as a table for docs/round-trips.md.
class RoundTrips final {
public:
    RoundTrips() {
        db::Connection::SetCommandHook([this](const QString& text) {
            if (!m_steps.empty())
                m_steps.back().Sent << text;
        });
    }
    ~RoundTrips() { db::Connection::SetCommandHook({}); }
    RoundTrips(const RoundTrips&) = delete;
    RoundTrips& operator=(const RoundTrips&) = delete;

    void Begin(const QString& step) { m_steps.push_back({step, {}}); }

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
        return true;
    }

private:
    struct OneStep {
        QString Name;
        QStringList Sent;
    };

    /// A procedure by its name, a statement by its beginning; neighbours that are equal as one.
    static QString Row(const OneStep& step) {
        QStringList names;
        int times = 0;
        const auto close = [&] {
            if (times > 1)
                names.last() += QStringLiteral(" (%1)").arg(times);
        };
        for (const QString& command : step.Sent) {
            const bool call = command.section(u' ', 0, 0).contains(QStringLiteral(".."));
            const QString name =
                u'`' + (call ? command.section(u' ', 0, 0) : command.section(u' ', 0, 3)) + u'`';
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

    std::vector<OneStep> m_steps;
};
