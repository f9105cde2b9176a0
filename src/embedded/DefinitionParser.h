#pragma once

#include "embedded/QueryParser.h"

namespace embedded {

/// Reads what makes and drops tables and indexes.
class DefinitionParser : protected QueryParser {
protected:
    DefinitionParser(std::string_view text, std::vector<Token> tokens, Module& module)
        : QueryParser(std::move(tokens), module), m_source(text) {}
    ~DefinitionParser() = default;

    /// After CREATE TABLE.
    CreateTable ParseCreateTable();
    /// After ALTER.
    AlterTable ParseAlterTable();
    /// After CREATE.
    CreateIndex ParseCreateIndex();
    /// After DROP.
    Drop ParseDrop();
    /// After CREATE ROLE or GRANT: reads to the end of the statement.
    void SkipRole();
    void SkipGrant();

private:
    void ParseElement(TableDefinition& definition);
    void ParseColumn(TableDefinition& definition);
    bool ParseColumnOption(ColumnDefinition& column);
    std::vector<std::string> ParseColumnList();
    /// The text of the expression that stands here, brackets included.
    std::string TakeExpressionText();

    std::string_view m_source;
};

}  // namespace embedded
