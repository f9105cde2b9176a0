#pragma once

#include "embedded/RowSink.h"

namespace embedded {

/// Stands where nobody wants the rows.
class NoRows final : public RowSink {
public:
    void BeginResult(const std::vector<ResultColumn>&) override {}
    void Null() override {}
    void Integer(qint64) override {}
    void Double(double) override {}
    void Text(std::string_view) override {}
    void DateTime(std::string_view) override {}
    void EndRow() override {}
};

}  // namespace embedded
