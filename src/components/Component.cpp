#include "components/Component.h"

namespace components {

void Component::MissingMember(const char* progId, const char* member) {
    throw base::RuntimeError(438, QStringLiteral("%1 does not support %2.")
                                      .arg(QLatin1String(progId), QLatin1String(member)));
}

}  // namespace components
