#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "components/Component.h"

/// Creates the in-house components by ProgID.
namespace components {

using Factory = std::function<std::shared_ptr<Component>()>;

/// Makes a ProgID known, in place of what it stood for; tests register fakes.
void Register(const QString& progId, Factory factory);

/// Registers every component of this program.
void RegisterBuiltIns();

/// A new object of that ProgID. A server name is accepted; the object lives in this program.
/// Throws base::RuntimeError 429 naming the ProgID when it is unknown or of another kind.
std::shared_ptr<Component> Create(const QString& progId, const QString& serverName = {});

template <class Interface>
std::shared_ptr<Interface> CreateObject(const QString& progId, const QString& serverName = {}) {
    auto object = std::dynamic_pointer_cast<Interface>(Create(progId, serverName));
    if (!object)
        throw base::RuntimeError(429, QStringLiteral("The component can't be created: %1").arg(progId));
    return object;
}

}  // namespace components
