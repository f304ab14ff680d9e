#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace rvl::platform {

/// The argument text after the program name; call once from main, before anything reads CommandLine.
void SetCommandLine(int argc, const char* const* argv);
Text CommandLine();

/// The words after the program name, for programs that take them one by one. A character above 255 raises
/// "Conversion would cause data loss".
std::vector<Text> ProgramWords(int argc, const char* const* argv);

Text ExecutablePath();  ///< full path of the running executable
std::uint32_t ProcessId();

/// Starts a process with a command line whose first word is the program. It inherits nothing but the
/// environment, and its end is nobody's concern. Returns a Win32 code.
int StartProcess(const Text& commandLine, std::uint32_t& processId);

/// Ends the process at once: no further events, no destructors.
[[noreturn]] void ExitProcessNow(int code);

/// Writes a line where a person who started the program in a terminal sees it.
void WriteStandardError(const Text& line);

/// True when windows can be shown.
bool HasDisplay();

/// Opens a web page or document with the shell's default handler; false when there is none.
bool OpenDocument(const Text& address);

/// Seeds and other numbers nobody can guess.
std::uint64_t SystemRandom();

}  // namespace rvl::platform
