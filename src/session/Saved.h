#pragma once

#include <QString>
#include <functional>

/// What an action has just committed. The status bar says it from now on, and again when the last
/// of what belongs to the action is over; a failure in between says first what stands, so that
/// nobody saves it twice.
class Saved final {
public:
    /// "2 requests are saved", "O'HARA, Ana", and for the status bar a remark: "1 line was left
    /// out". The name stands last: where room is short it is cut, and the chosen patient's is seen
    /// anyway.
    Saved(const QString& what, const QString& whom, const QString& remark = {});
    ~Saved();
    Saved(const Saved&) = delete;
    Saved& operator=(const Saved&) = delete;

    /// Does what follows the commit. Throws what `work` throws, as "Slip C15856D is saved. Printing
    /// failed: ...".
    void Then(const QString& step, const std::function<void()>& work) const;

    /// Hears every sentence; nobody does at first.
    static void SetHook(std::function<void(const QString& sentence)> hook);

private:
    QString m_what;
    QString m_sentence;
};
