#include "platform/process.h"

#include <glib.h>
#include <sys/random.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <iostream>

#include "platform/posix/host_path.h"

namespace rvl::platform {
namespace {

Text& CommandLineText() {
    static Text text;
    return text;
}

/// Arguments come as UTF-8; one that is not keeps its bytes, so that it is at least seen in the log.
Text ArgumentText(const char* argument) {
    try {
        return TextFromUtf8(argument);
    } catch (...) {
        return argument;
    }
}

Text Quoted(const Text& argument) {
    if (!argument.empty() && argument.find_first_of(" \"") == Text::npos) return argument;
    Text quoted = "\"";
    for (const char character : argument) {
        if (character == '"') quoted += '"';
        quoted += character;
    }
    return quoted + "\"";
}

}  // namespace

void SetCommandLine(int argc, const char* const* argv) {
    Text& line = CommandLineText();
    line.clear();
    for (int index = 1; index < argc; ++index) {
        if (index > 1) line += ' ';
        line += Quoted(ArgumentText(argv[index]));
    }
}

std::vector<Text> ProgramWords(int argc, const char* const* argv) {
    std::vector<Text> words;
    for (int index = 1; index < argc; ++index)
        words.push_back(TextFromUtf8(argv[index]));
    return words;
}

Text CommandLine() {
    return CommandLineText();
}

Text ExecutablePath() {
    char path[PATH_MAX];
    const ssize_t size = readlink("/proc/self/exe", path, sizeof path);
    return size > 0 ? WindowsPath({path, static_cast<std::size_t>(size)}) : Text();
}

std::uint32_t ProcessId() {
    return static_cast<std::uint32_t>(getpid());
}

void ExitProcessNow(int code) {
    _exit(code);
}

void WriteStandardError(const Text& line) {
    std::cerr << Utf8FromText(line) << std::endl;
}

bool HasDisplay() {
    const char* display = std::getenv("DISPLAY");
    return display != nullptr && *display != '\0';
}

bool OpenDocument(const Text& address) {
    std::string program = "xdg-open", argument = Utf8FromText(address);
    char* arguments[] = {program.data(), argument.data(), nullptr};
    return g_spawn_async(nullptr, arguments, nullptr, G_SPAWN_SEARCH_PATH, nullptr, nullptr, nullptr,
                         nullptr) != 0;
}

std::uint64_t SystemRandom() {
    std::uint64_t value = 0;
    while (getrandom(&value, sizeof value, 0) != static_cast<ssize_t>(sizeof value)) {
    }
    return value;
}

}  // namespace rvl::platform
