#include "platform/win32/input_lines.h"

#include <array>
#include <utility>

#include "platform/win32/utf8.h"

namespace rvl::platform {
namespace {

constexpr std::size_t kMostAtOnce = 4096;

std::string WithoutReturn(std::string line) {
    if (line.ends_with('\r')) line.pop_back();
    return line;
}

}  // namespace

InputLines::InputLines() : m_input(GetStdHandle(STD_INPUT_HANDLE)) {
    DWORD mode = 0;
    m_isConsole = GetConsoleMode(m_input, &mode) != 0;
}

std::optional<std::string> InputLines::Next() {
    for (;;) {
        if (auto line = TakeLine()) return line;
        if (m_isConsole ? ReadTyped() : ReadMore()) continue;
        if (m_rest.empty()) return std::nullopt;
        return WithoutReturn(std::exchange(m_rest, {}));
    }
}

std::optional<std::string> InputLines::TakeLine() {
    const std::size_t end = m_rest.find('\n');
    if (end == std::string::npos) return std::nullopt;
    std::string line = m_rest.substr(0, end);
    m_rest.erase(0, end + 1);
    return WithoutReturn(std::move(line));
}

bool InputLines::ReadMore() {
    std::array<char, kMostAtOnce> buffer;
    DWORD count = 0;
    if (!ReadFile(m_input, buffer.data(), buffer.size(), &count, nullptr) || count == 0) return false;
    m_rest.append(buffer.data(), count);
    return true;
}

/// A console gives bytes of its own code page, but UTF-16 to those who ask for it. Ctrl+Z at the beginning of
/// a line means that no more comes.
bool InputLines::ReadTyped() {
    constexpr wchar_t kEnd = 0x1A;
    std::array<wchar_t, kMostAtOnce> buffer;
    DWORD count = 0;
    if (!ReadConsoleW(m_input, buffer.data(), buffer.size(), &count, nullptr)) return false;
    if (m_rest.empty() && (count == 0 || buffer[0] == kEnd)) return false;
    m_rest += Utf8({buffer.data(), count});
    return true;
}

}  // namespace rvl::platform
