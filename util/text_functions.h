#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/text.h"

namespace rvl {

// Case follows ISO 8859-1: A-Z and À-Þ without × have a lower-case form 32 above; ß, ÿ and µ have no
// upper-case form within the character set and stay as they are.

Text LowerCase(TextView text);
Text UpperCase(TextView text);

/// Leading and trailing spaces removed; other blanks stay. TrimView is a view into `text`.
Text Trim(TextView text);
TextView TrimView(TextView text);

/// -1, 0 or 1, by the codes of the lower-case forms.
int CompareNoCase(TextView a, TextView b);
bool EqualsNoCase(TextView a, TextView b);

/// "0x" and eight upper-case hexadecimal digits.
Text HexString(std::int32_t value);

/// The bytes of the text in memory order, two per character, low byte first: "41 00" for "A".
Text HexDumpString(TextView text);

/// True for any character below 32 or from 127 up, except NUL, CR and LF.
bool ContainsNonPrintableCharacters(TextView text);

/// Decided by the first character that is not a space: y, t, a, p are true, n, f, d or none are false, in
/// either case; any other text is true when it is a number other than 0.
bool toBool(TextView text);

/// The plain text of an HTML fragment. A "<" without its ">" is text.
Text DeHTML(TextView html);

/// The text up to its first NUL.
Text StripTerminator(TextView text);

/// "mm:ss"; minutes are not capped at 59, negative seconds count as 0.
Text MMSS(std::int32_t seconds);

Text NumberText(std::int64_t value);

// A number is an optional sign and decimal digits, with an optional fraction after a point, between spaces.

/// The number rounded to an integer, halves to the even neighbour; raises 13 "Type mismatch" when the text
/// is no number and 6 "Overflow" beyond 32 bits.
std::int32_t ToLong(TextView text);

/// As ToLong, but gives `fallback` where that raises.
std::int32_t ParseLongOr(TextView text, std::int32_t fallback);

/// Integers only: a fraction, like an overflow, gives none.
std::optional<std::int64_t> ParseInteger64(TextView text);

/// The pieces between separators, empty ones included, as views into `text`. Only a separator of one
/// character separates; with any other the text is one piece.
std::vector<TextView> SplitAt(TextView text, TextView separator);

}  // namespace rvl
