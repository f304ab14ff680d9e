#pragma once

#include "platform/text.h"

namespace rvl {

/// The system's SQL in the words of SQLite: TOP becomes LIMIT, "+" (which only ever joins texts here) becomes
/// "||", and text literals compare without regard to case, also with what is joined together. Spaces around
/// the statement are gone. What is no SQL stays wrong, for SQLite to refuse.
Text TranslateSql(TextView sql);

/// The one table whose rows a SELECT shows as they are: nothing joined, grouped or computed. As it stands in
/// the statement, quoted or not; empty for every other statement.
Text ShownTable(TextView sql);

/// The name itself when the text is nothing but a name (of a table), else empty.
Text SingleName(TextView sql);

}  // namespace rvl
