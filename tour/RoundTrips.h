#pragma once

#include <QStringList>
#include <vector>

/// What each step of the day sends to the server.
class RoundTrips final {
public:
    RoundTrips();
    ~RoundTrips();
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

    /// How many commands and which, a row for each step: docs/round-trips.md.
    QString Table() const;
    /// Every command to the letter but for dates and times: docs/commands.md.
    QString Commands() const;
    /// What a step sent again without being asked to, a line each.
    QStringList NeedlesslyRepeated() const;

private:
    struct OneStep {
        QString Name;
        QStringList Sent;
    };

    static QString Row(const OneStep& step);

    std::vector<OneStep> m_steps;
    static inline bool s_paused = false;
};
