#include "components/builtin/HeldRecordset.h"

#include "db/Recordset.h"

namespace components {

namespace {

constexpr int kDynamicCursor = 2;
constexpr int kReadOnly = 1;
constexpr int kUnspecified = -1;

}  // namespace

HeldRecordset::~HeldRecordset() {
    Close();
}

std::shared_ptr<db::Recordset> HeldRecordset::Open(const QString& command,
                                                   const db::ConnectionRef& connection) {
    Close();
    if (!m_recordset)
        m_recordset = std::make_shared<db::Recordset>();
    m_recordset->Open(command, connection, kDynamicCursor, kReadOnly, kUnspecified);
    return m_recordset;
}

void HeldRecordset::Close() {
    if (m_recordset && m_recordset->State() != 0)
        m_recordset->Close();
}

}  // namespace components
