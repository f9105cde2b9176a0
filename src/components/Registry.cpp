#include "components/Registry.h"

#include <map>

namespace components {

namespace {

std::map<QString, Factory>& Factories() {
    static std::map<QString, Factory> factories;
    return factories;
}

}  // namespace

void Register(const QString& progId, Factory factory) {
    Factories()[progId.toLower()] = std::move(factory);
}

std::shared_ptr<Component> Create(const QString& progId, const QString& serverName) {
    Q_UNUSED(serverName);
    const auto found = Factories().find(progId.toLower());
    if (found == Factories().end())
        throw NoSuchComponent(progId);
    return found->second();
}

base::RuntimeError NoSuchComponent(const QString& progId) {
    return base::RuntimeError(429,
                              QStringLiteral("The component %1 cannot be created.").arg(progId));
}

}  // namespace components
