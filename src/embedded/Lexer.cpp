#include "embedded/Lexer.h"

#include <cstring>

#include "embedded/Failure.h"

namespace embedded {

namespace {

bool IsDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

bool StartsWord(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || letter == '_' ||
           static_cast<unsigned char>(letter) >= 0x80;
}

bool ContinuesWord(char letter) {
    return StartsWord(letter) || IsDigit(letter) || letter == '#' || letter == '$' || letter == '@';
}

class Lexer {
public:
    Lexer(std::string_view text, int line) : m_text(text), m_line(line) {}

    std::vector<Token> Run() {
        std::vector<Token> tokens;
        do {
            tokens.push_back(Next());
        } while (tokens.back().kind != Token::Kind::End);
        return tokens;
    }

private:
    char At(size_t ahead = 0) const {
        return m_next + ahead < m_text.size() ? m_text[m_next + ahead] : '\0';
    }

    void SkipBlanks() {
        while (m_next < m_text.size()) {
            const char letter = At();
            if (letter == '\n') {
                ++m_line;
                ++m_next;
            } else if (letter == ' ' || letter == '\t' || letter == '\r') {
                ++m_next;
            } else if (letter == '-' && At(1) == '-') {
                const size_t end = m_text.find('\n', m_next);
                m_next = end == std::string_view::npos ? m_text.size() : end;
            } else if (letter == '/' && At(1) == '*') {
                SkipComment();
            } else {
                return;
            }
        }
    }

    void SkipComment() {
        const int line = m_line;
        int depth = 0;
        do {
            if (m_next >= m_text.size()) {
                throw Failure(113, "Missing end comment mark '*/'.", line);
            }
            if (At() == '/' && At(1) == '*') {
                ++depth;
                m_next += 2;
            } else if (At() == '*' && At(1) == '/') {
                --depth;
                m_next += 2;
            } else {
                m_line += At() == '\n' ? 1 : 0;
                ++m_next;
            }
        } while (depth > 0);
    }

    Token Next() {
        SkipBlanks();
        Token token;
        token.line = m_line;
        token.begin = m_next;
        if (m_next >= m_text.size()) {
            return token;
        }
        const char letter = At();
        if (letter == '\'') {
            token.kind = Token::Kind::Text;
            token.text = Quoted('\'');
        } else if (letter == '[' || letter == '"') {
            token.kind = Token::Kind::QuotedName;
            token.text = Quoted(letter == '[' ? ']' : '"');
        } else if (StartsWord(letter) || letter == '@') {
            token.kind = letter == '@' ? Token::Kind::Variable : Token::Kind::Word;
            token.text = Word();
        } else if (IsDigit(letter) || (letter == '.' && IsDigit(At(1)))) {
            Number(token);
        } else {
            token.kind = Token::Kind::Symbol;
            token.text = Symbol();
        }
        return token;
    }

    std::string Word() {
        const size_t begin = m_next++;
        while (m_next < m_text.size() && ContinuesWord(At())) {
            ++m_next;
        }
        return std::string(m_text.substr(begin, m_next - begin));
    }

    std::string Quoted(char close) {
        const int line = m_line;
        const size_t begin = m_next++;
        std::string inside;
        while (m_next < m_text.size()) {
            const char letter = m_text[m_next++];
            if (letter == close) {
                if (At() != close) {
                    return inside;
                }
                ++m_next;
            }
            m_line += letter == '\n' ? 1 : 0;
            inside += letter;
        }
        throw Failure(105,
                      "Unclosed quotation mark after the character string '" +
                          std::string(m_text.substr(begin + 1, 60)) + "'.",
                      line);
    }

    void Number(Token& token) {
        const size_t begin = m_next;
        token.kind = Token::Kind::Integer;
        SkipDigits();
        if (At() == '.') {
            token.kind = Token::Kind::Decimal;
            ++m_next;
            SkipDigits();
        }
        if ((At() | 0x20) == 'e') {
            token.kind = Token::Kind::Float;
            ++m_next;
            if (At() == '+' || At() == '-') {
                ++m_next;
            }
            SkipDigits();
        }
        token.text = std::string(m_text.substr(begin, m_next - begin));
        if (StartsWord(At())) {
            throw SyntaxFailure(token.text + At(), m_line);
        }
    }

    void SkipDigits() {
        while (IsDigit(At())) {
            ++m_next;
        }
    }

    std::string Symbol() {
        static const char* const pairs[] = {"<>", "<=", ">=", "!="};
        for (const char* pair : pairs) {
            if (m_text.compare(m_next, 2, pair) == 0) {
                m_next += 2;
                return pair;
            }
        }
        const char letter = m_text[m_next];
        if (letter == '\0' || std::strchr("(),.;=<>+-*/%", letter) == nullptr) {
            throw SyntaxFailure(letter == '\0' ? std::string("NUL") : std::string(1, letter),
                                m_line);
        }
        ++m_next;
        return std::string(1, letter);
    }

    std::string_view m_text;
    size_t m_next = 0;
    int m_line;
};

}  // namespace

std::vector<Token> Tokens(std::string_view text, int firstLine) {
    return Lexer(text, firstLine).Run();
}

}  // namespace embedded
