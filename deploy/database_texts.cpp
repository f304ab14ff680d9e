#include "deploy/database_texts.h"

#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {

Text QuoteSQLString(TextView text) {
    Text quoted = "'";
    for (const char character : text)
        quoted.append(character == '\'' ? 2 : 1, character);
    return quoted + "'";
}

std::int32_t StringToDestinationLocation(const Text& text) try {
    const Text name = Trim(UpperCase(text));
    if (name == "USER_PROFILE") return 1;
    if (name == "PROGRAM_FILES") return 2;
    if (name == "CUSTOM") return 3;
    ErrAssert(false, "StringToDestinationLocation: Invalid location \"" + text + "\"");
    return 0;
} catch (...) {
    HandleError("Globals.StringToDestinationLocation");
    return 0;
}

LongVector StringToLongVector(TextView text, TextView separator) {
    LongVector vector;
    vector.FromString(text, separator);
    return vector;
}

}  // namespace rvl
