#pragma once

#include <exception>
#include <string>

namespace embedded {

/// A refusal on its way to the client: the server's number and text, and the line of the script
/// or command it belongs to (0 where none is known).
class Failure final : public std::exception {
public:
    Failure(int number, std::string text, int line = 0)
        : m_number(number), m_text(std::move(text)), m_line(line) {}

    int Number() const { return m_number; }
    const std::string& Text() const { return m_text; }
    int Line() const { return m_line; }
    void SetLine(int line) { m_line = line; }
    const char* what() const noexcept override { return m_text.c_str(); }

private:
    int m_number;
    std::string m_text;
    int m_line;
};

/// "Incorrect syntax near 'x'."
Failure SyntaxFailure(const std::string& near, int line);

/// Refuses what the subset leaves out, by name.
Failure OutsideSubset(const std::string& what, int line);

}  // namespace embedded
