#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "components/Component.h"

/// Creates the in-house components by ProgID, in any spelling of case.
namespace components {

using Factory = std::function<std::shared_ptr<Component>()>;

/// Makes a ProgID known, in place of what it stood for; tests register fakes.
void Register(const QString& progId, Factory factory);

/// Registers every component of this program.
void RegisterBuiltIns();

/// A new object of that ProgID. A server name is accepted; the object lives in this program.
/// Throws base::RuntimeError 429 naming the ProgID when it is unknown.
std::shared_ptr<Component> Create(const QString& progId, const QString& serverName = {});

/// What is thrown for a ProgID that is unknown or of another kind.
base::RuntimeError NoSuchComponent(const QString& progId);

/// As Create, for the members of one interface.
template <class Interface>
std::shared_ptr<Interface> CreateObject(const QString& progId, const QString& serverName = {}) {
    auto object = std::dynamic_pointer_cast<Interface>(Create(progId, serverName));
    if (!object)
        throw NoSuchComponent(progId);
    return object;
}

}  // namespace components
