#include "db/Recordset.h"

#include "base/Errors.h"
#include "db/ConnectionImpl.h"
#include "db/RecordsetImpl.h"
#include "db/RowUpdate.h"

namespace db {

namespace {

constexpr int kNoCurrentRow = 3021;
constexpr int kNotUpdatable = 3251;
constexpr int kUnknownField = 3265;
constexpr int kClosed = 3704;
constexpr int kOpen = 3705;

constexpr int kChangeInPlace = 3;

}  // namespace

void Recordset::Impl::Keep(std::shared_ptr<RowStore> rows, const QString& source) {
    Source = source;
    Row = 0;
    Changes.clear();
    Written.clear();
    if (rows->ColumnCount() > 0) {
        Rows = std::move(rows);
    }
}

void Recordset::Impl::Fail(int number, const QString& description) const {
    throw base::DatabaseError(number, description, Source);
}

void Recordset::Impl::RequireOpen() const {
    if (!Rows) {
        Fail(kClosed, QStringLiteral("The recordset is closed."));
    }
}

void Recordset::Impl::RequireClosed() const {
    if (Rows) {
        Fail(kOpen, QStringLiteral("The recordset is still open."));
    }
}

void Recordset::Impl::RequireRow() const {
    RequireOpen();
    if (Row >= Rows->RowCount()) {
        Fail(kNoCurrentRow, QStringLiteral("There is no current row."));
    }
}

Value Recordset::Impl::Stored(int column) const {
    const auto written = Written.find({Row, column});
    return written == Written.end() ? Rows->At(Row, column) : written->second;
}

void Recordset::Impl::SaveChanges() {
    QStringList names;
    for (const embedded::ResultColumn& column : Rows->Columns()) {
        names.append(column.Name);
    }
    const auto target = TargetOf(Source, names);
    if (!target) {
        Fail(kNotUpdatable,
             QStringLiteral("Only the rows of a SELECT from one table can be changed."));
    }
    for (const auto& [field, value] : Changes) {
        if (target->Columns[field].isEmpty()) {
            Fail(kNotUpdatable,
                 QStringLiteral("\"%1\" is computed and cannot be changed.").arg(names[field]));
        }
    }
    const auto keys = Session->m_impl->KeyColumns(target->Table);
    if (!HoldsKey(*target, keys)) {
        Fail(kNotUpdatable,
             QStringLiteral("Only rows that were read with their table's key can be changed."));
    }
    const QString command =
        UpdateCommand(*target, keys, Changes, [this](int field) { return Stored(field); });
    Transaction transaction(*Session);
    RowStore nothing;
    const qint64 written = Session->m_impl->Run(command, nothing);
    // A row that is no longer there wrote nothing: the caller's own transaction goes on.
    if (written == 0 || written == 1) {
        transaction.Commit();
    }
    if (written != 1) {
        throw base::DatabaseError(
            kRowChanged,
            QStringLiteral("Row cannot be located for updating. Some values may have been changed "
                           "since it was last read."),
            command);
    }
    for (const auto& [field, value] : Changes) {
        Written[{Row, field}] = value;
    }
    Changes.clear();
}

Value Field::Value() const {
    const Recordset::Impl& recordset = *m_recordset.m_impl;
    recordset.RequireRow();
    const auto changed = recordset.Changes.find(m_column);
    return changed == recordset.Changes.end() ? recordset.Stored(m_column) : changed->second;
}

void Field::SetValue(const db::Value& value) {
    Recordset::Impl& recordset = *m_recordset.m_impl;
    recordset.RequireRow();
    if (recordset.LockType != kChangeInPlace) {
        recordset.Fail(kNotUpdatable, QStringLiteral("The recordset was opened read-only."));
    }
    recordset.Changes[m_column] = value;
}

Recordset::Recordset() : m_impl(std::make_unique<Impl>()) {}

Recordset::~Recordset() = default;

int Recordset::State() const {
    return m_impl->Rows ? 1 : 0;
}

void Recordset::Close() {
    m_impl->RequireOpen();
    m_impl->Rows.reset();
    m_impl->Session.reset();
    m_impl->Changes.clear();
}

void Recordset::SetCursorLocation(int location) {
    Q_UNUSED(location);
    m_impl->RequireClosed();
}

void Recordset::Open(const QString& source, const ConnectionRef& activeConnection, int cursorType,
                     int lockType, int options) {
    Q_UNUSED(cursorType);
    Q_UNUSED(options);
    m_impl->RequireClosed();
    auto rows = std::make_shared<RowStore>();
    activeConnection.Get().m_impl->Run(source, *rows);
    m_impl->Session = activeConnection.Shared();
    m_impl->LockType = lockType;
    m_impl->Keep(std::move(rows), source);
}

bool Recordset::Eof() const {
    m_impl->RequireOpen();
    return m_impl->Row >= m_impl->Rows->RowCount();
}

int Recordset::RecordCount() const {
    m_impl->RequireOpen();
    return m_impl->Rows->RowCount();
}

void Recordset::MoveFirst() {
    m_impl->RequireOpen();
    m_impl->Row = 0;
    m_impl->Changes.clear();
    m_impl->RequireRow();
}

void Recordset::MoveNext() {
    m_impl->RequireRow();
    ++m_impl->Row;
    m_impl->Changes.clear();
}

Field Recordset::Fields(const QString& name) {
    m_impl->RequireOpen();
    const int column = m_impl->Rows->ColumnIndex(name);
    if (column < 0) {
        m_impl->Fail(kUnknownField, QStringLiteral("The result has no column \"%1\".").arg(name));
    }
    return Field(*this, column);
}

Field Recordset::Fields(int index) {
    m_impl->RequireOpen();
    if (index < 0 || index >= m_impl->Rows->ColumnCount()) {
        m_impl->Fail(kUnknownField, QStringLiteral("The result has no column %1.").arg(index));
    }
    return Field(*this, index);
}

QStringList Recordset::FieldNames() const {
    m_impl->RequireOpen();
    QStringList names;
    for (const embedded::ResultColumn& column : m_impl->Rows->Columns()) {
        names.append(column.Name);
    }
    return names;
}

void Recordset::Update() {
    m_impl->RequireRow();
    if (!m_impl->Changes.empty()) {
        m_impl->SaveChanges();
    }
}

std::shared_ptr<const RowStore> Recordset::Rows() const {
    m_impl->RequireOpen();
    return m_impl->Rows;
}

}  // namespace db
