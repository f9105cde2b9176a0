#include "embedded/QueryParser.h"

#include "embedded/Text.h"

namespace embedded {

SelectPtr QueryParser::ParseSelect() {
    auto select = std::make_unique<Select>();
    select->line = Line();
    do {
        select->branches.push_back(ParseBranch());
        if (!IsWord("UNION")) {
            break;
        }
        Take();
        if (!AcceptWord("ALL")) {
            throw OutsideSubset("UNION without ALL", Line());
        }
    } while (true);
    if (AcceptWord("ORDER")) {
        ExpectWord("BY");
        select->orderBy = ParseOrder();
    }
    return select;
}

SelectBranch QueryParser::ParseBranch() {
    SelectBranch branch;
    ExpectWord("SELECT");
    branch.distinct = AcceptWord("DISTINCT");
    if (AcceptWord("TOP")) {
        ExpectSymbol("(");
        branch.top = ParseExpression();
        ExpectSymbol(")");
    }
    do {
        branch.items.push_back(ParseItem());
    } while (AcceptSymbol(","));
    if (IsWord("INTO")) {
        throw OutsideSubset("SELECT INTO", Line());
    }
    if (AcceptWord("FROM")) {
        ParseSources(branch);
    }
    if (AcceptWord("WHERE")) {
        branch.where = ParseExpression();
    }
    ParseGrouping(branch);
    return branch;
}

void QueryParser::ParseGrouping(SelectBranch& branch) {
    if (AcceptWord("GROUP")) {
        ExpectWord("BY");
        do {
            branch.groupBy.push_back(ParseExpression());
        } while (AcceptSymbol(","));
    }
    if (AcceptWord("HAVING")) {
        branch.having = ParseExpression();
    }
}

SelectItem QueryParser::ParseItem() {
    SelectItem item;
    item.line = Line();
    if (AcceptSymbol("*")) {
        return item;
    }
    if (IsName() && IsSymbol(".", 1) && IsSymbol("*", 2)) {
        item.qualifier = TakeName();
        m_position += 2;
        return item;
    }
    if (AtVariable() && IsSymbol("=", 1)) {
        item.slot = TakeVariable();
        Take();
        item.value = ParseExpression();
        return item;
    }
    item.value = ParseExpression();
    if (item.value->kind == Expression::Kind::Column) {
        item.alias = item.value->text;
    }
    const bool named = AcceptWord("AS");
    if (Peek().kind == Token::Kind::Text) {
        item.alias = Take().text;
    } else if (named || IsName()) {
        item.alias = TakeName();
    }
    return item;
}

void QueryParser::ParseSources(SelectBranch& branch) {
    branch.sources.push_back(ParseSource());
    while (true) {
        if (AcceptSymbol(",")) {
            branch.sources.push_back(ParseSource());
            branch.sources.back().join = "CROSS JOIN";
            continue;
        }
        const std::string join = TakeJoin();
        if (join.empty()) {
            return;
        }
        branch.sources.push_back(ParseSource());
        TableSource& source = branch.sources.back();
        source.join = join;
        if (join != "CROSS JOIN") {
            ExpectWord("ON");
            source.condition = ParseExpression();
        }
    }
}

std::string QueryParser::TakeJoin() {
    std::string join;
    if (AcceptWord("LEFT")) {
        AcceptWord("OUTER");
        join = "LEFT JOIN";
    } else if (AcceptWord("RIGHT")) {
        AcceptWord("OUTER");
        join = "RIGHT JOIN";
    } else if (AcceptWord("CROSS")) {
        join = "CROSS JOIN";
    } else if (AcceptWord("INNER") || IsWord("JOIN")) {
        join = "JOIN";
    } else {
        return join;
    }
    ExpectWord("JOIN");
    return join;
}

TableSource QueryParser::ParseSource() {
    TableSource source;
    source.name = TakeObjectName();
    const bool named = AcceptWord("AS");
    if (named || IsName()) {
        source.alias = TakeName();
    }
    SkipHints();
    return source;
}

// The embedded server locks the whole file for a writing transaction, so that the hints of a
// deciding read hold without being obeyed.
void QueryParser::SkipHints() {
    if (!IsWord("WITH")) {
        return;
    }
    Take();
    ExpectSymbol("(");
    do {
        if (!AcceptWord("UPDLOCK") && !AcceptWord("HOLDLOCK")) {
            throw OutsideSubset(Peek().text, Line());
        }
    } while (AcceptSymbol(","));
    ExpectSymbol(")");
}

std::vector<OrderItem> QueryParser::ParseOrder() {
    std::vector<OrderItem> order;
    do {
        OrderItem item;
        item.value = ParseExpression();
        item.descending = AcceptWord("DESC");
        if (!item.descending) {
            AcceptWord("ASC");
        }
        order.push_back(std::move(item));
    } while (AcceptSymbol(","));
    return order;
}

Insert QueryParser::ParseInsert() {
    Insert insert;
    ExpectWord("INSERT");
    AcceptWord("INTO");
    insert.table = TakeObjectName();
    if (AcceptSymbol("(")) {
        do {
            insert.columns.push_back(TakeName());
        } while (AcceptSymbol(","));
        ExpectSymbol(")");
    }
    if (IsWord("SELECT")) {
        insert.select = ParseSelect();
        return insert;
    }
    ExpectWord("VALUES");
    do {
        ExpectSymbol("(");
        std::vector<ExpressionPtr> row;
        do {
            row.push_back(AcceptWord("DEFAULT") ? nullptr : ParseExpression());
        } while (AcceptSymbol(","));
        ExpectSymbol(")");
        insert.rows.push_back(std::move(row));
    } while (AcceptSymbol(","));
    return insert;
}

Update QueryParser::ParseUpdate() {
    Update update;
    ExpectWord("UPDATE");
    update.table = TakeObjectName();
    SkipHints();
    ExpectWord("SET");
    do {
        update.items.push_back(ParseUpdateItem());
    } while (AcceptSymbol(","));
    if (IsWord("FROM")) {
        throw OutsideSubset("UPDATE ... FROM", Line());
    }
    if (AcceptWord("WHERE")) {
        update.where = ParseExpression();
    }
    return update;
}

UpdateItem QueryParser::ParseUpdateItem() {
    UpdateItem item;
    item.line = Line();
    if (AtVariable()) {
        item.slot = TakeVariable();
        ExpectSymbol("=");
    }
    item.column = TakeColumn();
    ExpectSymbol("=");
    item.value = ParseExpression();
    return item;
}

std::string QueryParser::TakeColumn() {
    std::string column = TakeName();
    while (AcceptSymbol(".")) {
        column = TakeName();
    }
    return column;
}

Delete QueryParser::ParseDelete() {
    Delete statement;
    ExpectWord("DELETE");
    AcceptWord("FROM");
    statement.table = TakeObjectName();
    SkipHints();
    if (IsWord("FROM") || IsName()) {
        throw OutsideSubset("DELETE ... FROM", Line());
    }
    if (AcceptWord("WHERE")) {
        statement.where = ParseExpression();
    }
    return statement;
}

}  // namespace embedded
