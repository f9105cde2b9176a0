#pragma once

#include <QString>
#include <memory>

#include "db/Connection.h"

namespace db {
class Recordset;
}

namespace components {

/// The one recordset that a ward component keeps and opens anew for every question.
class HeldRecordset final {
public:
    HeldRecordset() = default;
    /// What was handed out is closed with its component.
    ~HeldRecordset();
    HeldRecordset(const HeldRecordset&) = delete;
    HeldRecordset& operator=(const HeldRecordset&) = delete;

    /// Closes the rows of the question before and opens these; always the same object.
    std::shared_ptr<db::Recordset> Open(const QString& command,
                                        const db::ConnectionRef& connection);
    /// Nothing where nothing is open.
    void Close();

private:
    std::shared_ptr<db::Recordset> m_recordset;
};

}  // namespace components
