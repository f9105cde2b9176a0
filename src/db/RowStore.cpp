#include "db/RowStore.h"

#include <algorithm>
#include <cstring>

#include "base/Dates.h"
#include "base/Numbers.h"
#include "db/ChunkPool.h"

namespace db {

namespace {

// A row is its cells one after the other: a tag, then eight bytes of a number, or the length and
// the UTF-8 bytes of a text. A moment is kept as the text it is stored as.
enum class Tag : char { Null, Integer, Double, Text, DateTime };

using Length = quint32;

template <typename T>
T Load(const char* from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

bool HasBytes(Tag tag) {
    return tag == Tag::Text || tag == Tag::DateTime;
}

const char* NextCell(const char* cell) {
    const Tag tag = Tag(*cell++);
    if (tag == Tag::Null) {
        return cell;
    }
    return HasBytes(tag) ? cell + sizeof(Length) + Load<Length>(cell) : cell + sizeof(qint64);
}

const char* FindCell(const char* cell, int column) {
    while (column-- > 0) {
        cell = NextCell(cell);
    }
    return cell;
}

std::string_view BytesOf(const char* cell) {
    return {cell + 1 + sizeof(Length), Load<Length>(cell + 1)};
}

QString Utf16Of(const char* cell) {
    const std::string_view bytes = BytesOf(cell);
    return QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
}

QDateTime MomentOf(const char* cell) {
    return base::FromStoredDateTime(Utf16Of(cell)).value_or(QDateTime());
}

}  // namespace

struct RowStore::Storage {
    std::vector<char*> Chunks;
    std::vector<std::unique_ptr<char[]>> LargeRows;
    char* Cursor = nullptr;
    char* End = nullptr;
    char* RowStart = nullptr;
    std::vector<int> ByName;
    bool Keeping = false;

    ~Storage() {
        for (char* chunk : Chunks) {
            ChunkPool::Return(chunk);
        }
    }

    char* Reserve(std::size_t bytes) {
        if (std::size_t(End - Cursor) < bytes) {
            Grow(bytes);
        }
        char* place = Cursor;
        Cursor += bytes;
        return place;
    }

    // A row stays in one piece: what is there of the current one moves to the new memory.
    void Grow(std::size_t bytes) {
        const std::size_t begun = std::size_t(Cursor - RowStart);
        char* place = nullptr;
        std::size_t size = ChunkPool::kChunkBytes;
        if (begun + bytes <= size) {
            Chunks.reserve(Chunks.size() + 1);
            place = ChunkPool::Take();
            Chunks.push_back(place);
        } else {
            size = 2 * (begun + bytes);
            LargeRows.push_back(std::make_unique<char[]>(size));
            place = LargeRows.back().get();
        }
        if (begun > 0) {
            std::memcpy(place, RowStart, begun);
        }
        RowStart = place;
        Cursor = place + begun;
        End = place + size;
    }

    template <typename T>
    void PutNumber(Tag tag, T number) {
        if (Keeping) {
            char* place = Reserve(1 + sizeof number);
            *place = char(tag);
            std::memcpy(place + 1, &number, sizeof number);
        }
    }

    void PutBytes(Tag tag, std::string_view bytes) {
        if (!Keeping) {
            return;
        }
        char* place = Reserve(1 + sizeof(Length) + bytes.size());
        const Length length = Length(bytes.size());
        *place = char(tag);
        std::memcpy(place + 1, &length, sizeof length);
        if (length > 0) {
            std::memcpy(place + 1 + sizeof length, bytes.data(), length);
        }
    }
};

RowStore::RowStore() : m_storage(std::make_unique<Storage>()) {}

RowStore::~RowStore() = default;

int RowStore::ColumnIndex(const QString& name) const {
    const auto& order = m_storage->ByName;
    const auto found = std::lower_bound(
        order.begin(), order.end(), name, [this](int column, const QString& wanted) {
            return m_columns[column].Name.compare(wanted, Qt::CaseInsensitive) < 0;
        });
    const bool there =
        found != order.end() && m_columns[*found].Name.compare(name, Qt::CaseInsensitive) == 0;
    return there ? *found : -1;
}

Value RowStore::At(int row, int column) const {
    const char* cell = FindCell(m_rows[row], column);
    switch (Tag(*cell)) {
        case Tag::Integer:
            return Load<qint64>(cell + 1);
        case Tag::Double:
            return Load<double>(cell + 1);
        case Tag::Text:
            return Utf16Of(cell);
        case Tag::DateTime:
            return MomentOf(cell);
        case Tag::Null:
            break;
    }
    return {};
}

QString RowStore::TextAt(int row, int column) const {
    const char* cell = FindCell(m_rows[row], column);
    switch (Tag(*cell)) {
        case Tag::Integer:
            return QString::number(Load<qint64>(cell + 1));
        case Tag::Double:
            return base::PlainText(Load<double>(cell + 1));
        case Tag::Text:
            return Utf16Of(cell);
        case Tag::DateTime:
            return base::DateTimeText(MomentOf(cell));
        case Tag::Null:
            break;
    }
    return {};
}

std::string_view RowStore::Utf8At(int row, int column) const {
    const char* cell = FindCell(m_rows[row], column);
    return HasBytes(Tag(*cell)) ? BytesOf(cell) : std::string_view();
}

void RowStore::BeginResult(const std::vector<embedded::ResultColumn>& columns) {
    Storage& storage = *m_storage;
    storage.Keeping = m_columns.empty() && !columns.empty();
    if (!storage.Keeping) {
        return;
    }
    m_columns = columns;
    for (int column = 0; column < ColumnCount(); ++column) {
        storage.ByName.push_back(column);
    }
    // Stable: of columns with the same name, the first is the one that is found.
    std::stable_sort(storage.ByName.begin(), storage.ByName.end(), [this](int left, int right) {
        return m_columns[left].Name.compare(m_columns[right].Name, Qt::CaseInsensitive) < 0;
    });
}

void RowStore::Null() {
    if (m_storage->Keeping) {
        *m_storage->Reserve(1) = char(Tag::Null);
    }
}

void RowStore::Integer(qint64 value) {
    m_storage->PutNumber(Tag::Integer, value);
}

void RowStore::Double(double value) {
    m_storage->PutNumber(Tag::Double, value);
}

void RowStore::Text(std::string_view utf8) {
    m_storage->PutBytes(Tag::Text, utf8);
}

void RowStore::DateTime(std::string_view stored) {
    m_storage->PutBytes(Tag::DateTime, stored);
}

void RowStore::EndRow() {
    if (m_storage->Keeping) {
        m_rows.push_back(m_storage->RowStart);
        m_storage->RowStart = m_storage->Cursor;
    }
}

}  // namespace db
