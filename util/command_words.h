#pragma once

#include "platform/text.h"

namespace rvl {

/// The word with the zero-based index of a command line, without its quotes; empty when there is none.
/// Single spaces separate words, so two of them in a row hold an empty word. Inside double quotes spaces
/// belong to the word and two double quotes stand for one. A quote that opens or closes beside another
/// character begins a new word there.
Text GetParam(TextView line, int index);

Text FirstWord(TextView line);

/// What follows the first word and the space after it, unchanged; from a quote glued to the first word on.
Text RestAfterFirstWord(TextView line);

}  // namespace rvl
