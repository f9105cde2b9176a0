#pragma once

#include <QString>
#include <string_view>
#include <vector>

namespace embedded {

/// What a result column holds, whichever way the file stores it.
enum class ColumnKind { Integer, Double, Text, DateTime };

struct ResultColumn {
    QString Name;
    ColumnKind Kind;
};

/// Receives the rows of a command, cell by cell, left to right. Views are valid only during the
/// call. A command with several results begins anew for each; the receiver decides which it keeps.
class RowSink {
public:
    virtual ~RowSink() = default;
    virtual void BeginResult(const std::vector<ResultColumn>& columns) = 0;
    virtual void Null() = 0;
    virtual void Integer(qint64 value) = 0;
    virtual void Double(double value) = 0;
    /// UTF-8.
    virtual void Text(std::string_view utf8) = 0;
    /// "yyyy-MM-dd HH:mm:ss.fff".
    virtual void DateTime(std::string_view stored) = 0;
    virtual void EndRow() = 0;
};

}  // namespace embedded
