#pragma once

#include "embedded/ExpressionParser.h"

namespace embedded {

/// Reads SELECT, INSERT, UPDATE and DELETE.
class QueryParser : protected ExpressionParser {
protected:
    using ExpressionParser::ExpressionParser;
    ~QueryParser() = default;

    SelectPtr ParseSelect() override;
    Insert ParseInsert();
    Update ParseUpdate();
    Delete ParseDelete();

private:
    SelectBranch ParseBranch();
    SelectItem ParseItem();
    void ParseSources(SelectBranch& branch);
    std::string TakeJoin();
    TableSource ParseSource();
    void SkipHints();
    void ParseGrouping(SelectBranch& branch);
    std::vector<OrderItem> ParseOrder();
    UpdateItem ParseUpdateItem();
    std::string TakeColumn();
};

}  // namespace embedded
