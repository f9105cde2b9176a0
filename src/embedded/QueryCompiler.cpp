#include "embedded/QueryCompiler.h"

#include <cstdlib>

#include "embedded/Text.h"

namespace embedded {

namespace {

std::string List(const std::vector<std::string>& parts) {
    std::string list;
    for (const std::string& part : parts) {
        list += (list.empty() ? "" : ", ") + part;
    }
    return list;
}

}  // namespace

std::shared_ptr<Plan> QueryCompiler::Finish(std::string sql, bool writes) {
    auto plan = std::make_shared<Plan>();
    plan->sql = std::move(sql);
    plan->parameters = m_parameters;
    plan->writes = writes;
    return plan;
}

std::shared_ptr<Plan> QueryCompiler::Query(const Select& select) {
    const std::vector<int> taken = TakenBy(select);
    Targets targets;
    targets.count = taken.size();
    targets.convert = [&](const Fragment& value, size_t position, int line) {
        const int slot = taken[position];
        return Converted(value, m_module.variables[size_t(slot)].type, line);
    };
    const Selected selected = CompileSelect(select, nullptr, taken.empty() ? nullptr : &targets);
    std::shared_ptr<Plan> plan = Finish(selected.sql, false);
    plan->targets = taken;
    for (size_t i = 0; i < selected.values.size(); ++i) {
        plan->columns.push_back(
            {QString::fromStdString(selected.names[i]), selected.values[i].type.ResultKind()});
    }
    return plan;
}

std::vector<int> QueryCompiler::TakenBy(const Select& select) const {
    std::vector<int> taken;
    for (const SelectItem& item : select.branches[0].items) {
        if (item.slot >= 0) {
            taken.push_back(item.slot);
        }
    }
    if (!taken.empty() &&
        (taken.size() != select.branches[0].items.size() || select.branches.size() > 1)) {
        throw Failure(141,
                      "A SELECT statement that assigns a value to a variable must not be combined "
                      "with data-retrieval operations.",
                      select.line);
    }
    return taken;
}

QueryCompiler::Selected QueryCompiler::Subselect(const Select& select, const Scope& outer) {
    if (!TakenBy(select).empty()) {
        throw SyntaxFailure("=", select.line);
    }
    return CompileSelect(select, &outer, nullptr);
}

QueryCompiler::Selected QueryCompiler::CompileSelect(const Select& select, const Scope* outer,
                                                     const Targets* targets) {
    std::vector<Branch> branches(select.branches.size());
    for (size_t i = 0; i < branches.size(); ++i) {
        branches[i].source = &select.branches[i];
        ReadBranch(branches[i], outer);
    }
    const bool united = branches.size() > 1;
    const std::string order = Order(select, branches[0], united);
    for (const Branch& branch : branches) {
        const bool grouped = branch.grouping.aggregates || !branch.source->groupBy.empty() ||
                             branch.source->having != nullptr;
        if (grouped && !branch.grouping.loose.empty()) {
            const Expression& column = *branch.grouping.loose.front();
            throw Failure(8120,
                          "Column '" + column.text +
                              "' is invalid in the select list because it is not contained in "
                              "either an aggregate function or the GROUP BY clause.",
                          column.line);
        }
    }
    Unify(branches, targets, select.line);
    Selected selected;
    for (const Branch& branch : branches) {
        const std::string text = BranchText(branch, targets);
        selected.sql += selected.sql.empty() ? "" : " UNION ALL ";
        selected.sql +=
            united && !branch.limit.empty() ? "SELECT * FROM (" + text + branch.limit + ")" : text;
    }
    selected.sql += order + (united ? "" : branches[0].limit);
    selected.names = std::move(branches[0].names);
    selected.values = std::move(branches[0].values);
    return selected;
}

void QueryCompiler::ReadBranch(Branch& branch, const Scope* outer) {
    branch.scope.outer = outer;
    ReadSources(branch);
    if (branch.source->where) {
        branch.rest = " WHERE " + Condition(*branch.source->where, branch.scope);
    }
    branch.grouping = {&branch.scope, {}, {}, false, 0, m_grouping};
    m_grouping = &branch.grouping;
    ReadGroups(branch);
    ReadItems(branch);
    if (branch.source->having) {
        branch.rest += " HAVING " + Condition(*branch.source->having, branch.scope);
    }
    m_grouping = branch.grouping.outer;
    branch.limit = LimitOf(*branch.source, branch.scope);
}

void QueryCompiler::ReadSources(Branch& branch) {
    for (const TableSource& source : branch.source->sources) {
        const Table& table = m_catalog.TableOf(source.name, m_module.database);
        const std::string alias = source.alias.empty() ? table.shortName : source.alias;
        for (const Scope::Source& other : branch.scope.sources) {
            if (SameName(other.alias, alias)) {
                throw Failure(
                    1013,
                    "The objects '" + alias + "' in the FROM clause have the same exposed names.",
                    source.name.line);
            }
        }
        branch.scope.sources.push_back({alias, &table});
        // SQLite's CROSS JOIN would also fix the order in which the tables are read.
        const std::string join = source.join == "CROSS JOIN" ? "JOIN" : source.join;
        branch.from += branch.from.empty() ? " FROM " : " " + join + " ";
        branch.from += Identifier(table.name) + " AS " + Identifier(alias);
        if (source.condition) {
            branch.from += " ON " + Condition(*source.condition, branch.scope);
        }
    }
}

void QueryCompiler::ReadGroups(Branch& branch) {
    std::vector<std::string> keys;
    std::vector<std::string> texts;
    for (const ExpressionPtr& key : branch.source->groupBy) {
        const Fragment value = Value(*key, branch.scope);
        if (value.fixed) {
            throw Failure(164, "Each GROUP BY expression must contain at least one column.",
                          key->line);
        }
        keys.push_back(value.sql);
        texts.push_back(Collated(value));
    }
    branch.grouping.keys = std::move(keys);
    branch.grouping.loose.clear();
    if (!texts.empty()) {
        branch.rest += " GROUP BY " + List(texts);
    }
}

void QueryCompiler::ReadItems(Branch& branch) {
    for (const SelectItem& item : branch.source->items) {
        if (!item.value) {
            AddStar(branch, item);
            continue;
        }
        branch.values.push_back(Value(*item.value, branch.scope));
        branch.names.push_back(item.alias);
    }
}

void QueryCompiler::AddStar(Branch& branch, const SelectItem& item) {
    bool found = false;
    for (const Scope::Source& source : branch.scope.sources) {
        if (!item.qualifier.empty() && !SameName(item.qualifier, source.alias)) {
            continue;
        }
        found = true;
        for (const Column& column : source.table->columns) {
            const std::string sql = Identifier(source.alias) + "." + Identifier(column.name);
            branch.values.push_back({sql, column.type, true, false});
            branch.names.push_back(column.name);
        }
    }
    if (!found) {
        throw SyntaxFailure("*", item.line);
    }
}

std::string QueryCompiler::LimitOf(const SelectBranch& branch, const Scope& scope) {
    if (!branch.top) {
        return {};
    }
    const Fragment count =
        Converted(Value(*branch.top, scope), {Type::Kind::BigInt, 0, 0, 0}, branch.top->line);
    return branch.top->kind == Expression::Kind::Number ? " LIMIT " + count.sql
                                                        : " LIMIT max(0, " + count.sql + ")";
}

void QueryCompiler::Unify(std::vector<Branch>& branches, const Targets* targets, int line) {
    const size_t count = targets != nullptr ? targets->count : branches[0].values.size();
    for (const Branch& branch : branches) {
        if (branch.values.size() == count) {
            continue;
        }
        if (branches.size() > 1) {
            throw Failure(205,
                          "All queries combined using UNION ALL must have an equal number of "
                          "expressions in their target lists.",
                          line);
        }
        throw Failure(120, "The select list does not have as many items as the insert list.", line);
    }
    for (size_t i = 0; i < count; ++i) {
        Type type = branches[0].values[i].type;
        for (const Branch& branch : branches) {
            type = CommonType(type, branch.values[i].type);
        }
        for (Branch& branch : branches) {
            Fragment& value = branch.values[i];
            if (branches.size() > 1) {
                value = Converted(value, type, line);
            }
            if (targets != nullptr) {
                value = targets->convert(value, i, line);
            }
        }
    }
}

std::string QueryCompiler::BranchText(const Branch& branch, const Targets* targets) const {
    const bool distinct = branch.source->distinct;
    std::vector<std::string> values;
    for (const Fragment& value : branch.values) {
        values.push_back(distinct ? Collated(value) : value.sql);
    }
    if (targets != nullptr) {
        values.insert(values.end(), targets->extras.begin(), targets->extras.end());
    }
    return (distinct ? "SELECT DISTINCT " : "SELECT ") + List(values) + branch.from + branch.rest;
}

std::string QueryCompiler::Order(const Select& select, Branch& first, bool united) {
    if (select.orderBy.empty()) {
        return {};
    }
    m_grouping = &first.grouping;
    std::vector<std::string> parts;
    for (const OrderItem& item : select.orderBy) {
        parts.push_back(OrderValue(*item.value, first, united) + (item.descending ? " DESC" : ""));
    }
    m_grouping = first.grouping.outer;
    return " ORDER BY " + List(parts);
}

std::string QueryCompiler::OrderValue(const Expression& value, Branch& first, bool united) {
    const int column = OrderedColumn(value, first);
    if (column < 0) {
        if (united || value.kind == Expression::Kind::Number) {
            throw Failure(104, "ORDER BY items must appear in the select list here.", value.line);
        }
        return Ordered(Value(value, first.scope));
    }
    const Fragment& selected = first.values[size_t(column)];
    const bool collated = selected.type.IsText() && (united || !selected.column);
    return std::to_string(column + 1) + (collated ? " COLLATE TEXTS" : "");
}

int QueryCompiler::OrderedColumn(const Expression& value, const Branch& first) const {
    if (value.kind == Expression::Kind::Number) {
        const int ordinal = std::atoi(value.text.c_str());
        return ordinal >= 1 && ordinal <= int(first.values.size()) ? ordinal - 1 : -1;
    }
    if (value.kind != Expression::Kind::Column || !value.qualifier.empty()) {
        return -1;
    }
    for (size_t i = 0; i < first.names.size(); ++i) {
        if (SameName(first.names[i], value.text)) {
            return int(i);
        }
    }
    return -1;
}

std::shared_ptr<Plan> QueryCompiler::Assignment(const Expression& value, const Type& type,
                                                int slot) {
    const Fragment converted = Converted(Value(value, Scope{}), type, value.line);
    std::shared_ptr<Plan> plan = Finish("SELECT " + converted.sql, false);
    plan->columns.push_back({QString(), type.ResultKind()});
    plan->targets.push_back(slot);
    return plan;
}

std::shared_ptr<Plan> QueryCompiler::Test(const Expression& condition) {
    return Finish("SELECT " + Condition(condition, Scope{}), false);
}

std::string QueryCompiler::Check(const Expression& condition, const Table& table) {
    Scope scope;
    scope.bare = true;
    scope.sources.push_back({table.shortName, &table});
    return Condition(condition, scope);
}

}  // namespace embedded
