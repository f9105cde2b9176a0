#include "embedded/StatementParser.h"

#include <cstdlib>

#include "embedded/Text.h"

namespace embedded {

namespace {

constexpr int DeepestBlock = 100;

std::shared_ptr<Module> EmptyModule(const std::string& database) {
    auto module = std::make_shared<Module>();
    module->database = database;
    return module;
}

}  // namespace

std::shared_ptr<Module> StatementParser::ParseBatch(std::string_view text, int firstLine,
                                                    const std::string& database) {
    auto module = EmptyModule(database);
    StatementParser(text, firstLine, *module).ReadBatch();
    return module;
}

std::shared_ptr<Module> StatementParser::ParseModule(std::string_view text, int firstLine,
                                                     const std::string& database) {
    auto module = EmptyModule(database);
    StatementParser(text, firstLine, *module).ReadModule();
    return module;
}

std::shared_ptr<Module> StatementParser::ParseCommand(std::string_view text,
                                                      const std::string& database) {
    auto module = EmptyModule(database);
    StatementParser(text, 1, *module).ReadCommand();
    return module;
}

ExpressionPtr StatementParser::ParseValue(std::string_view text) {
    Module module;
    StatementParser parser(text, 1, module);
    ExpressionPtr value = parser.ParseExpression();
    if (parser.Peek().kind != Token::Kind::End) {
        parser.Refuse();
    }
    return value;
}

ObjectName StatementParser::ParseName(std::string_view text) {
    Module module;
    StatementParser parser(text, 1, module);
    ObjectName name = parser.TakeObjectName();
    if (parser.Peek().kind != Token::Kind::End) {
        parser.Refuse();
    }
    return name;
}

StatementParser::StatementParser(std::string_view text, int firstLine, Module& module)
    : DefinitionParser(text, Tokens(text, firstLine), module), m_text(text) {}

void StatementParser::ReadBatch() {
    m_definitions = true;
    if (IsWord("CREATE") && (IsWord("PROCEDURE", 1) || IsWord("FUNCTION", 1))) {
        auto statement = std::make_unique<Statement>();
        statement->line = Line();
        statement->body = CreateModule{std::string(m_text.substr(Peek().begin)), Line()};
        m_module.statements.push_back(std::move(statement));
        return;
    }
    while (Peek().kind != Token::Kind::End) {
        ParseInto(m_module.statements);
    }
}

void StatementParser::ReadCommand() {
    auto statement = std::make_unique<Statement>();
    statement->line = Line();
    if (IsName()) {
        statement->body = ParseExecute();
    } else if (IsWord("EXEC") || IsWord("EXECUTE")) {
        Take();
        statement->body = ParseExecute();
    } else if (!ParseQuery(*statement)) {
        Refuse();
    }
    AcceptSymbol(";");
    if (Peek().kind != Token::Kind::End) {
        Refuse();
    }
    m_module.statements.push_back(std::move(statement));
}

void StatementParser::ReadModule() {
    ExpectWord("CREATE");
    const bool function = AcceptWord("FUNCTION");
    if (!function) {
        ExpectWord("PROCEDURE");
    }
    m_module.kind = function ? Module::Kind::Function : Module::Kind::Procedure;
    m_module.name = TakeObjectName();
    if (!m_module.name.database.empty()) {
        m_module.database = NameKey(m_module.name.database);
    }
    ParseParameters();
    if (function) {
        ExpectWord("RETURNS");
        m_module.returnType = TakeType();
    }
    ExpectWord("AS");
    if (function && !IsWord("BEGIN")) {
        Refuse();
    }
    while (Peek().kind != Token::Kind::End) {
        ParseInto(m_module.statements);
    }
    if (m_module.statements.empty()) {
        Refuse();
    }
}

void StatementParser::ParseParameters() {
    const bool bracket = AcceptSymbol("(");
    if (!bracket && m_module.kind == Module::Kind::Function) {
        Refuse();
    }
    while (AtVariable()) {
        AddVariable(Line());
        Parameter parameter;
        if (AcceptSymbol("=")) {
            parameter.hasDefault = true;
            parameter.defaultValue = ParseArgumentValue();
        }
        if (IsWord("OUTPUT") || IsWord("OUT")) {
            throw OutsideSubset(Peek().text, Line());
        }
        m_module.parameters.push_back(std::move(parameter));
        if (!AcceptSymbol(",")) {
            break;
        }
    }
    if (bracket) {
        ExpectSymbol(")");
    }
}

int StatementParser::AddVariable(int line) {
    Variable variable;
    variable.name = Take().text;
    for (const Variable& known : m_module.variables) {
        if (SameName(known.name, variable.name)) {
            throw Failure(
                134, "The variable name '" + variable.name + "' has already been declared.", line);
        }
    }
    AcceptWord("AS");
    variable.type = TakeType();
    m_module.variables.push_back(std::move(variable));
    return int(m_module.variables.size()) - 1;
}

void StatementParser::ParseInto(std::vector<StatementPtr>& statements) {
    if (AcceptSymbol(";")) {
        return;
    }
    if (IsWord("DECLARE")) {
        ParseDeclare(statements);
    } else {
        statements.push_back(ParseStatement());
    }
}

StatementPtr StatementParser::ParseStatement() {
    if (++m_nesting > DeepestBlock) {
        throw Failure(191, "Some part of your SQL statement is nested too deeply.", Line());
    }
    auto statement = std::make_unique<Statement>();
    statement->line = Line();
    if (!ParseQuery(*statement) && !ParseControl(*statement) && !ParseDefinition(*statement)) {
        Refuse();
    }
    AcceptSymbol(";");
    --m_nesting;
    return statement;
}

bool StatementParser::ParseQuery(Statement& statement) {
    if (IsWord("SELECT")) {
        statement.body = ParseSelect();
    } else if (IsWord("INSERT")) {
        statement.body = ParseInsert();
    } else if (IsWord("UPDATE")) {
        statement.body = ParseUpdate();
    } else if (IsWord("DELETE")) {
        statement.body = ParseDelete();
    } else {
        return false;
    }
    return true;
}

bool StatementParser::ParseControl(Statement& statement) {
    if (IsWord("SET")) {
        ParseSet(statement);
    } else if (IsWord("BEGIN")) {
        ParseBegin(statement);
    } else if (IsWord("IF")) {
        ParseIf(statement);
    } else if (IsWord("WHILE")) {
        ParseWhile(statement);
    } else if (IsWord("THROW")) {
        ParseThrow(statement);
    } else if (AcceptWord("EXEC") || AcceptWord("EXECUTE")) {
        statement.body = ParseExecute();
    } else if (AcceptWord("COMMIT")) {
        ExpectWord("TRANSACTION");
        statement.body = CommitTransaction{};
    } else if (AcceptWord("RETURN")) {
        Return result;
        const bool function = m_module.kind == Module::Kind::Function;
        if (function || Peek().kind == Token::Kind::Integer || AtVariable()) {
            result.value = ParseExpression();
        }
        statement.body = std::move(result);
    } else if (m_loops > 0 && AcceptWord("BREAK")) {
        statement.body = Break{};
    } else if (m_loops > 0 && AcceptWord("CONTINUE")) {
        statement.body = Continue{};
    } else {
        return false;
    }
    return true;
}

bool StatementParser::ParseDefinition(Statement& statement) {
    if (!m_definitions) {
        return false;
    }
    if (AcceptWord("USE")) {
        statement.body = UseDatabase{NameKey(TakeName())};
    } else if (AcceptWord("CREATE")) {
        ParseCreate(statement);
    } else if (AcceptWord("ALTER")) {
        statement.body = ParseAlterTable();
    } else if (AcceptWord("DROP")) {
        statement.body = ParseDrop();
    } else if (IsWord("GRANT")) {
        SkipGrant();
    } else {
        return false;
    }
    return true;
}

void StatementParser::ParseCreate(Statement& statement) {
    if (AcceptWord("TABLE")) {
        statement.body = ParseCreateTable();
    } else if (IsWord("INDEX") || IsWord("UNIQUE")) {
        statement.body = ParseCreateIndex();
    } else if (AcceptWord("ROLE")) {
        SkipRole();
    } else if (IsWord("PROCEDURE") || IsWord("FUNCTION")) {
        throw Failure(
            111,
            "'CREATE " + NameKey(Peek().text) + "' must be the first statement in a query batch.",
            Line());
    } else {
        Refuse();
    }
}

void StatementParser::ParseDeclare(std::vector<StatementPtr>& statements) {
    ExpectWord("DECLARE");
    do {
        const int line = Line();
        if (!AtVariable()) {
            Refuse();
        }
        const int slot = AddVariable(line);
        if (AcceptSymbol("=")) {
            auto statement = std::make_unique<Statement>();
            statement->line = line;
            statement->body = Assign{slot, ParseExpression()};
            statements.push_back(std::move(statement));
        }
    } while (AcceptSymbol(","));
    AcceptSymbol(";");
}

void StatementParser::ParseSet(Statement& statement) {
    ExpectWord("SET");
    if (AtVariable()) {
        const int slot = TakeVariable();
        ExpectSymbol("=");
        statement.body = Assign{slot, ParseExpression()};
        return;
    }
    if (!AcceptWord("NOCOUNT") && !AcceptWord("XACT_ABORT")) {
        throw OutsideSubset("SET " + Peek().text, Line());
    }
    ExpectWord("ON");
}

void StatementParser::ParseBegin(Statement& statement) {
    ExpectWord("BEGIN");
    if (AcceptWord("TRANSACTION")) {
        statement.body = BeginTransaction{};
        return;
    }
    if (IsWord("TRY") || IsWord("CATCH")) {
        throw OutsideSubset("BEGIN " + Peek().text, Line());
    }
    Block block;
    while (!AcceptWord("END")) {
        if (Peek().kind == Token::Kind::End) {
            Refuse();
        }
        ParseInto(block.statements);
    }
    statement.body = std::move(block);
}

void StatementParser::ParseIf(Statement& statement) {
    ExpectWord("IF");
    If result;
    result.condition = ParseExpression();
    result.then = ParseStatement();
    if (AcceptWord("ELSE")) {
        result.otherwise = ParseStatement();
    }
    statement.body = std::move(result);
}

void StatementParser::ParseWhile(Statement& statement) {
    ExpectWord("WHILE");
    While result;
    result.condition = ParseExpression();
    ++m_loops;
    result.body = ParseStatement();
    --m_loops;
    statement.body = std::move(result);
}

void StatementParser::ParseThrow(Statement& statement) {
    ExpectWord("THROW");
    Throw result;
    result.number = ParseArgumentValue();
    ExpectSymbol(",");
    result.text = ParseArgumentValue();
    ExpectSymbol(",");
    TakeInteger();
    statement.body = std::move(result);
}

Execute StatementParser::ParseExecute() {
    Execute execute;
    execute.procedure = TakeObjectName();
    if (Peek().kind == Token::Kind::End || IsSymbol(";")) {
        return execute;
    }
    const bool constant =
        Peek().kind == Token::Kind::Text || Peek().kind == Token::Kind::Variable || IsSymbol("-") ||
        Peek().kind == Token::Kind::Integer || Peek().kind == Token::Kind::Decimal ||
        Peek().kind == Token::Kind::Float || IsWord("NULL") || IsWord("DEFAULT");
    if (!constant) {
        return execute;
    }
    do {
        Argument argument;
        if (Peek().kind == Token::Kind::Variable && IsSymbol("=", 1)) {
            argument.name = NameKey(Take().text);
            Take();
        } else if (!execute.arguments.empty() && !execute.arguments.back().name.empty()) {
            throw Failure(119, "Must pass parameters as '@name = value' after the first such one.",
                          Line());
        }
        if (!AcceptWord("DEFAULT")) {
            argument.value = ParseArgumentValue();
        }
        if (IsWord("OUTPUT") || IsWord("OUT")) {
            throw OutsideSubset(Peek().text, Line());
        }
        execute.arguments.push_back(std::move(argument));
    } while (AcceptSymbol(","));
    return execute;
}

ExpressionPtr StatementParser::ParseArgumentValue() {
    const bool negative = IsSymbol("-");
    const Token& token = Peek(negative ? 1 : 0);
    const bool number = token.kind == Token::Kind::Integer || token.kind == Token::Kind::Decimal ||
                        token.kind == Token::Kind::Float;
    const bool other =
        token.kind == Token::Kind::Text || token.kind == Token::Kind::Variable || IsWord("NULL");
    if (!number && (negative || !other)) {
        Refuse();
    }
    return ParsePlainValue();
}

}  // namespace embedded
