#include "components/builtin/clsCodeSearch.h"

namespace components {

// The lists live in this program: there is no application server to name.
void clsCodeSearch::SetMTS_Server(const QString& name) {
    Q_UNUSED(name);
}

void clsCodeSearch::Initialize_Classes() {
    m_companyName.clear();
    m_byCode = false;
    m_connection.reset();
}

}  // namespace components
