#include "session/Saved.h"

#include "base/Errors.h"

namespace {

std::function<void(const QString&)> g_hook;

void Say(const QString& sentence) {
    if (g_hook)
        g_hook(sentence);
}

}  // namespace

Saved::Saved(const QString& what, const QString& whom, const QString& remark)
    : m_what(what),
      m_sentence((remark.isEmpty() ? what : what + QStringLiteral(", ") + remark) +
                 QStringLiteral(": ") + whom) {
    Say(m_sentence);
}

Saved::~Saved() {
    Say(m_sentence);
}

void Saved::Then(const QString& step, const std::function<void()>& work) const {
    const auto told = [&](QString description) {
        // True of the step alone, and not what is to be read here.
        description.remove(base::kNothingSaved);
        return QStringLiteral("%1. %2 failed: %3").arg(m_what, step, description);
    };
    try {
        work();
    } catch (const base::DatabaseError& error) {
        throw base::DatabaseError(error.Number(), told(error.Description()), error.Command());
    } catch (const base::RuntimeError& error) {
        throw base::RuntimeError(error.Number(), told(error.Description()));
    }
}

void Saved::SetHook(std::function<void(const QString&)> hook) {
    g_hook = std::move(hook);
}
