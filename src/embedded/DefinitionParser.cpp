#include "embedded/DefinitionParser.h"

#include "embedded/Text.h"

namespace embedded {

CreateTable DefinitionParser::ParseCreateTable() {
    CreateTable create;
    create.table = TakeObjectName();
    ExpectSymbol("(");
    do {
        ParseElement(create.definition);
    } while (AcceptSymbol(","));
    ExpectSymbol(")");
    return create;
}

void DefinitionParser::ParseElement(TableDefinition& definition) {
    const bool constraint = AcceptWord("CONSTRAINT");
    if (constraint) {
        TakeName();
    }
    if (AcceptWord("PRIMARY")) {
        ExpectWord("KEY");
        definition.primaryKey = ParseColumnList();
    } else if (AcceptWord("UNIQUE")) {
        definition.uniques.push_back(ParseColumnList());
    } else if (AcceptWord("CHECK")) {
        definition.checks.push_back(TakeExpressionText());
    } else if (constraint) {
        Refuse();
    } else {
        ParseColumn(definition);
    }
}

void DefinitionParser::ParseColumn(TableDefinition& definition) {
    ColumnDefinition column;
    column.line = Line();
    column.name = TakeName();
    column.type = TakeType();
    if (AcceptWord("COLLATE")) {
        const std::string collation = TakeName();
        if (!column.type.IsText() || NameKey(collation) != "LATIN1_GENERAL_CI_AI") {
            throw OutsideSubset("COLLATE " + collation, column.line);
        }
        column.type.accentless = true;
    }
    while (ParseColumnOption(column)) {
    }
    if (column.primaryKey) {
        definition.primaryKey.push_back(column.name);
    }
    if (column.unique) {
        definition.uniques.push_back({column.name});
    }
    definition.columns.push_back(std::move(column));
}

bool DefinitionParser::ParseColumnOption(ColumnDefinition& column) {
    if (AcceptWord("CONSTRAINT")) {
        TakeName();
    }
    if (AcceptWord("NOT")) {
        ExpectWord("NULL");
        column.nullable = false;
    } else if (AcceptWord("NULL")) {
        column.nullable = true;
    } else if (AcceptWord("PRIMARY")) {
        ExpectWord("KEY");
        column.primaryKey = true;
    } else if (AcceptWord("UNIQUE")) {
        column.unique = true;
    } else if (AcceptWord("DEFAULT")) {
        column.defaultText = TakeExpressionText();
    } else if (AcceptWord("CHECK")) {
        column.checks.push_back(TakeExpressionText());
    } else if (IsWord("IDENTITY")) {
        const int line = Line();
        Take();
        ExpectSymbol("(");
        const int seed = TakeInteger();
        ExpectSymbol(",");
        if (seed != 1 || TakeInteger() != 1) {
            throw OutsideSubset("IDENTITY other than (1,1)", line);
        }
        ExpectSymbol(")");
        column.identity = true;
    } else {
        return false;
    }
    return true;
}

std::vector<std::string> DefinitionParser::ParseColumnList() {
    std::vector<std::string> columns;
    ExpectSymbol("(");
    do {
        columns.push_back(TakeName());
        AcceptWord("ASC");
    } while (AcceptSymbol(","));
    ExpectSymbol(")");
    return columns;
}

std::string DefinitionParser::TakeExpressionText() {
    const size_t begin = Peek().begin;
    if (IsSymbol("(")) {
        Take();
        ParseExpression();
        ExpectSymbol(")");
    } else {
        ParsePlainValue();
    }
    return std::string(m_source.substr(begin, Peek().begin - begin));
}

AlterTable DefinitionParser::ParseAlterTable() {
    AlterTable alter;
    ExpectWord("TABLE");
    alter.table = TakeObjectName();
    if (AcceptWord("ALTER")) {
        ExpectWord("COLUMN");
        alter.changes = true;
        ParseColumn(alter.definition);
        return alter;
    }
    ExpectWord("ADD");
    do {
        ParseColumn(alter.definition);
    } while (AcceptSymbol(","));
    return alter;
}

CreateIndex DefinitionParser::ParseCreateIndex() {
    CreateIndex create;
    create.unique = AcceptWord("UNIQUE");
    ExpectWord("INDEX");
    create.name = TakeName();
    ExpectWord("ON");
    create.table = TakeObjectName();
    ExpectSymbol("(");
    do {
        std::string column = TakeName();
        const bool descending = AcceptWord("DESC");
        if (!descending) {
            AcceptWord("ASC");
        }
        create.columns.emplace_back(std::move(column), descending);
    } while (AcceptSymbol(","));
    ExpectSymbol(")");
    return create;
}

Drop DefinitionParser::ParseDrop() {
    Drop drop;
    if (AcceptWord("TABLE")) {
        drop.kind = Drop::Kind::Table;
    } else if (AcceptWord("PROCEDURE")) {
        drop.kind = Drop::Kind::Procedure;
    } else if (AcceptWord("FUNCTION")) {
        drop.kind = Drop::Kind::Function;
    } else if (AcceptWord("INDEX")) {
        drop.kind = Drop::Kind::Index;
    } else {
        Refuse();
    }
    ExpectWord("IF");
    ExpectWord("EXISTS");
    drop.name = TakeObjectName();
    if (drop.kind == Drop::Kind::Index) {
        ExpectWord("ON");
        drop.table = TakeObjectName();
    }
    return drop;
}

void DefinitionParser::SkipRole() {
    TakeName();
}

void DefinitionParser::SkipGrant() {
    do {
        Take();
        if (Peek().kind == Token::Kind::End || IsSymbol(";")) {
            Refuse();
        }
    } while (!IsWord("TO"));
    Take();
    TakeName();
}

}  // namespace embedded
