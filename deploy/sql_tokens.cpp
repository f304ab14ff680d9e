#include "deploy/sql_tokens.h"

#include "util/text_functions.h"

namespace rvl {
namespace {

bool IsSpace(char character) {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool IsWordCharacter(char character) {
    const char lower = static_cast<char>(character | 0x20);
    return (lower >= 'a' && lower <= 'z') || IsDigit(character) || character == '_' ||
           static_cast<unsigned char>(character) >= 0x80;
}

template <class Predicate>
std::size_t EndOfRun(TextView sql, std::size_t start, Predicate belongs) {
    while (start < sql.size() && belongs(sql[start]))
        ++start;
    return start;
}

/// The quote is closed by its counterpart; a doubled one is part of the content.
SqlToken QuotedToken(SqlTokenKind kind, TextView sql, std::size_t start) {
    const char close = sql[start] == '[' ? ']' : sql[start];
    for (std::size_t index = start + 1; index < sql.size(); ++index) {
        if (sql[index] != close) continue;
        const bool doubled = close != ']' && index + 1 < sql.size() && sql[index + 1] == close;
        if (!doubled) return {kind, sql.substr(start, index + 1 - start)};
        ++index;
    }
    return {SqlTokenKind::Unfinished, sql.substr(start)};
}

SqlToken TokenAt(TextView sql, std::size_t start) {
    const char first = sql[start];
    const auto run = [&](SqlTokenKind kind, auto belongs) {
        return SqlToken{kind, sql.substr(start, EndOfRun(sql, start, belongs) - start)};
    };
    if (first == '\'') return QuotedToken(SqlTokenKind::Literal, sql, start);
    if (first == '"' || first == '[') return QuotedToken(SqlTokenKind::QuotedName, sql, start);
    if (IsSpace(first)) return run(SqlTokenKind::Space, IsSpace);
    if (IsDigit(first)) return run(SqlTokenKind::Number, IsDigit);
    if (IsWordCharacter(first)) return run(SqlTokenKind::Word, IsWordCharacter);
    return {SqlTokenKind::Symbol, sql.substr(start, 1)};
}

}  // namespace

bool SqlToken::IsWord(TextView upperCaseWord) const {
    return kind == SqlTokenKind::Word && EqualsNoCase(text, upperCaseWord);
}

std::vector<SqlToken> SplitSql(TextView sql) {
    std::vector<SqlToken> tokens;
    for (std::size_t start = 0; start < sql.size();) {
        tokens.push_back(TokenAt(sql, start));
        start += tokens.back().text.size();
    }
    return tokens;
}

}  // namespace rvl
