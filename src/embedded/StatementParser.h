#pragma once

#include <memory>

#include "embedded/DefinitionParser.h"

namespace embedded {

/// Reads whole texts: batches of a script, procedures and functions, client commands.
class StatementParser final : private DefinitionParser {
public:
    /// The statements of a batch, definitions among them. The text must stay valid meanwhile.
    static std::shared_ptr<Module> ParseBatch(std::string_view text, int firstLine,
                                              const std::string& database);
    /// A text that begins with CREATE PROCEDURE or CREATE FUNCTION.
    static std::shared_ptr<Module> ParseModule(std::string_view text, int firstLine,
                                               const std::string& database);
    /// The one statement of a client command: a query or a call, with or without EXEC.
    static std::shared_ptr<Module> ParseCommand(std::string_view text, const std::string& database);
    /// A value or condition alone, without variables.
    static ExpressionPtr ParseValue(std::string_view text);
    static ObjectName ParseName(std::string_view text);

private:
    StatementParser(std::string_view text, int firstLine, Module& module);

    void ReadBatch();
    void ReadModule();
    void ReadCommand();

    void ParseParameters();
    StatementPtr ParseStatement();
    void ParseInto(std::vector<StatementPtr>& statements);
    bool ParseQuery(Statement& statement);
    bool ParseControl(Statement& statement);
    bool ParseDefinition(Statement& statement);
    void ParseDeclare(std::vector<StatementPtr>& statements);
    void ParseSet(Statement& statement);
    void ParseBegin(Statement& statement);
    void ParseIf(Statement& statement);
    void ParseWhile(Statement& statement);
    void ParseThrow(Statement& statement);
    void ParseCreate(Statement& statement);
    Execute ParseExecute();
    ExpressionPtr ParseArgumentValue();
    int AddVariable(int line);

    std::string_view m_text;
    bool m_definitions = false;
    int m_nesting = 0;
    int m_loops = 0;
};

}  // namespace embedded
