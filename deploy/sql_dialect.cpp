#include "deploy/sql_dialect.h"

#include <algorithm>

#include "deploy/sql_tokens.h"

namespace rvl {
namespace {

/// A literal that holds a NUL would end the statement there, so its bytes are spelled out.
Text SpelledOut(TextView literal) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    Text hexadecimal;
    for (std::size_t index = 1; index + 1 < literal.size(); ++index) {
        for (const char byte : Utf8FromText(literal.substr(index, 1))) {
            const auto code = static_cast<unsigned char>(byte);
            hexadecimal += {kDigits[code >> 4], kDigits[code & 15]};
        }
        if (literal[index] == '\'') ++index;
    }
    return "CAST(X'" + hexadecimal + "' AS TEXT)";
}

/// The tokens of a statement without what may stand around it.
std::vector<SqlToken> StatementTokens(TextView sql) {
    std::vector<SqlToken> tokens = SplitSql(sql);
    const auto isSpace = [](const SqlToken& token) { return token.kind == SqlTokenKind::Space; };
    while (!tokens.empty() && (isSpace(tokens.back()) || tokens.back().IsSymbol(';')))
        tokens.pop_back();
    if (!tokens.empty() && isSpace(tokens.front())) tokens.erase(tokens.begin());
    return tokens;
}

class Translation {
 public:
    explicit Translation(TextView sql) : m_tokens(StatementTokens(sql)) {}

    Text Run() {
        m_inserts = !m_tokens.empty() && m_tokens.front().IsWord("INSERT");
        while (m_next < m_tokens.size())
            Translate(m_tokens[m_next++]);
        return m_text + m_limits.back();
    }

 private:
    void Translate(const SqlToken& token) {
        if (token.kind == SqlTokenKind::Literal)
            AddLiteral(token.text);
        else if (token.IsSymbol('+'))
            m_text += "||";
        else if (token.IsSymbol('('))
            OpenParenthesis();
        else if (token.IsSymbol(')'))
            CloseParenthesis();
        else if (!(m_afterSelect && token.IsWord("TOP") && TakeLimit()))
            m_text += token.text;
        if (token.kind != SqlTokenKind::Space)
            m_afterSelect = token.IsWord("SELECT") || token.IsWord("DISTINCT");
    }

    void AddLiteral(TextView literal) {
        m_text += literal.find('\0') == TextView::npos ? Text(literal) : SpelledOut(literal);
        if (!m_inserts) m_text += " COLLATE NOCASE";
    }

    void OpenParenthesis() {
        m_text += '(';
        m_limits.emplace_back();
    }

    /// A sub-select has its limit at its own end.
    void CloseParenthesis() {
        m_text += m_limits.back() + ")";
        if (m_limits.size() > 1) m_limits.pop_back();
    }

    /// The number behind TOP and the space around it.
    bool TakeLimit() {
        if (m_next + 1 >= m_tokens.size() || m_tokens[m_next + 1].kind != SqlTokenKind::Number) return false;
        m_limits.back() = " LIMIT " + Text(m_tokens[m_next + 1].text);
        m_next += 2;
        if (m_next < m_tokens.size() && m_tokens[m_next].kind == SqlTokenKind::Space) ++m_next;
        return true;
    }

    std::vector<SqlToken> m_tokens;
    std::size_t m_next = 0;
    bool m_inserts = false;
    bool m_afterSelect = false;
    Text m_text;
    std::vector<Text> m_limits{Text()};  // one for every open parenthesis
};

/// Reads a statement piece by piece, spaces aside.
class Reader {
 public:
    explicit Reader(TextView sql) : m_tokens(StatementTokens(sql)) {
        std::erase_if(m_tokens, [](const SqlToken& token) { return token.kind == SqlTokenKind::Space; });
    }

    bool AtEnd() const { return m_next == m_tokens.size(); }
    const SqlToken& Peek() const { return AtEnd() ? m_end : m_tokens[m_next]; }
    SqlToken Take() {
        const SqlToken token = Peek();
        if (!AtEnd()) ++m_next;
        return token;
    }
    bool TakeWord(TextView word) { return TakeIf(Peek().IsWord(word)); }
    bool TakeSymbol(char symbol) { return TakeIf(Peek().IsSymbol(symbol)); }
    bool TakeName() { return TakeIf(Peek().IsName()); }

 private:
    bool TakeIf(bool matches) {
        if (matches) ++m_next;
        return matches;
    }

    std::vector<SqlToken> m_tokens;
    std::size_t m_next = 0;
    SqlToken m_end{SqlTokenKind::Space, " "};
};

bool TakeColumn(Reader& reader) {
    if (reader.TakeSymbol('*')) return true;
    if (!reader.TakeName()) return false;
    return !reader.TakeSymbol('.') || reader.TakeSymbol('*') || reader.TakeName();
}

bool TakeColumns(Reader& reader) {
    do {
        if (!TakeColumn(reader)) return false;
    } while (reader.TakeSymbol(','));
    return true;
}

void TakeTop(Reader& reader) {
    if (reader.TakeWord("TOP")) reader.Take();
}

/// After the table: a condition and an order leave its rows what they are.
bool IsPlainRest(Reader& reader) {
    if (reader.AtEnd()) return true;
    if (!reader.Peek().IsWord("WHERE") && !reader.Peek().IsWord("ORDER")) return false;
    constexpr TextView kCombining[] = {"GROUP", "HAVING", "UNION", "EXCEPT", "INTERSECT"};
    for (int depth = 0; !reader.AtEnd();) {
        const SqlToken token = reader.Take();
        if (token.IsSymbol('(')) ++depth;
        if (token.IsSymbol(')')) --depth;
        const auto isToken = [&](TextView word) { return token.IsWord(word); };
        if (depth == 0 && std::any_of(std::begin(kCombining), std::end(kCombining), isToken)) return false;
    }
    return true;
}

}  // namespace

Text TranslateSql(TextView sql) {
    return Translation(sql).Run();
}

Text ShownTable(TextView sql) {
    Reader reader(sql);
    if (!reader.TakeWord("SELECT")) return "";
    TakeTop(reader);
    if (!TakeColumns(reader) || !reader.TakeWord("FROM")) return "";
    const SqlToken table = reader.Take();
    return table.IsName() && IsPlainRest(reader) ? Text(table.text) : Text();
}

Text SingleName(TextView sql) {
    Reader reader(sql);
    const SqlToken name = reader.Take();
    return name.IsName() && reader.AtEnd() ? Text(name.text) : Text();
}

}  // namespace rvl
