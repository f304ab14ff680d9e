#pragma once

#include <vector>

#include "platform/text.h"

namespace rvl {

enum class SqlTokenKind {
    Space,
    Word,  ///< keyword or plain name
    Number,
    Literal,     ///< '...', a quote inside is doubled
    QuotedName,  ///< "..." or [...]
    Symbol,      ///< any other single character
    Unfinished,  ///< a quote that is never closed, with all that follows
};

/// A piece of an SQL text, as a view into it. All pieces together are the whole text.
struct SqlToken {
    SqlTokenKind kind;
    TextView text;

    bool IsWord(TextView upperCaseWord) const;
    bool IsSymbol(char symbol) const { return kind == SqlTokenKind::Symbol && text[0] == symbol; }
    bool IsName() const { return kind == SqlTokenKind::Word || kind == SqlTokenKind::QuotedName; }
};

std::vector<SqlToken> SplitSql(TextView sql);

}  // namespace rvl
