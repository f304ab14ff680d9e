#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace rvl::platform {

/// Reads standard input line by line, and waits for them.
class InputLines {
 public:
    InputLines();

    /// The next line as UTF-8 without its end; none when no line comes any more.
    std::optional<std::string> Next();

 private:
    std::optional<std::string> TakeLine();
    bool ReadMore();
    bool ReadTyped();

    HANDLE m_input;
    bool m_isConsole;
    std::string m_rest;  ///< what was read of lines to come
};

}  // namespace rvl::platform
