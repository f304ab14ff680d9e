// The "REGEDIT4" text form of the registry, as Microsoft documents it under "How to add, modify, or delete
// registry subkeys and values by using a .reg file".

#include "platform/file_handle.h"
#include "platform/files.h"
#include "runtime/registry_value.h"
#include "util/error_text.h"
#include "util/handle_error.h"
#include "util/random_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

using platform::RegistryRoot;
using platform::RegistryValue;

Text RootName(RegistryRoot root) {
    switch (root) {
        case RegistryRoot::ClassesRoot:
            return "HKEY_CLASSES_ROOT";
        case RegistryRoot::CurrentUser:
            return "HKEY_CURRENT_USER";
        case RegistryRoot::LocalMachine:
            return "HKEY_LOCAL_MACHINE";
        case RegistryRoot::Users:
            return "HKEY_USERS";
    }
    RaiseInvalidCall("cRegistry.ExportReg");
}

Text HexDigits(std::uint32_t value, int count) {
    Text digits;
    for (int shift = 4 * (count - 1); shift >= 0; shift -= 4)
        digits += "0123456789abcdef"[value >> shift & 15];
    return digits;
}

Text Quoted(const Text& text) {
    Text quoted = "\"";
    for (const char character : text) {
        if (character == '\\' || character == '"') quoted += '\\';
        quoted += character;
    }
    return quoted + '"';
}

/// Continues a line with bytes, a closing NUL among them. A line of more than 80 characters goes on in the
/// next one.
Text WithHexBytes(Text line, const Text& bytes) {
    constexpr std::size_t kLongestLine = 80;
    std::size_t column = line.size();
    for (std::size_t index = 0; index <= bytes.size(); ++index) {
        if (column + 4 > kLongestLine) {  // two digits, a comma and the backslash
            line += "\\\r\n  ";
            column = 2;
        }
        const bool last = index == bytes.size();
        line += HexDigits(last ? 0 : static_cast<unsigned char>(bytes[index]), 2) + (last ? "" : ",");
        column += 3;
    }
    return line;
}

/// A text that would break its line is written as bytes too: it comes back as it was.
bool FitsOneLine(const Text& text) {
    return text.find_first_of(TextView("\r\n\0", 3)) == Text::npos;
}

Text ValueLine(const Text& name, const RegistryValue& value) {
    const Text line = (name.empty() ? Text("@") : Quoted(name)) + '=';
    if (const auto* number = std::get_if<std::uint32_t>(&value))
        return line + "dword:" + HexDigits(*number, 8);
    if (const auto* expandable = std::get_if<platform::ExpandableText>(&value))
        return WithHexBytes(line + "hex(2):", expandable->text);
    const Text& text = std::get<Text>(value);
    return FitsOneLine(text) ? line + Quoted(text) : WithHexBytes(line + "hex(1):", text);
}

/// A key or value that somebody deletes meanwhile is left out.
void AppendKey(Text& file, RegistryRoot root, const Text& path) {
    file += '[' + RootName(root) + path + "]\r\n";
    for (const Text& name : platform::RegistryValueNames(root, path))
        if (const auto value = platform::ReadRegistry(root, path, name))
            file += ValueLine(name, *value) + "\r\n";
    file += "\r\n";
    for (const Text& subkey : platform::RegistrySubkeys(root, path))
        AppendKey(file, root, Text(path).append("\\").append(subkey));
}

/// Each step with one backslash before it; empty for the root itself.
Text StepsOf(const Text& key) {
    Text steps;
    for (const TextView step : SplitAt(key, "\\"))
        if (!step.empty()) steps += '\\' + Text(step);
    return steps;
}

int WriteNewFile(const Text& path, const Text& content) {
    platform::FileHandle file;
    const int code = file.Open(path, platform::FileAccess::Write, platform::FileShare::None,
                               platform::FileDisposition::CreateNew);
    std::size_t written = 0;
    return code != 0 ? code : file.Write(content.data(), content.size(), written);
}

/// The file gets its name when it is complete.
int ReplaceFile(const Text& path, const Text& content) {
    const Text temporary = path + '.' + RandomNonce(8) + ".new";
    int code = WriteNewFile(temporary, content);
    if (code == 0) code = platform::MoveFileTo(temporary, path);
    if (code != 0) platform::DeleteFileAt(temporary);
    return code;
}

[[noreturn]] void RaiseWin32(int code) {
    throw Error(code, "cRegistry.ExportReg", GetErrorString(code));
}

}  // namespace

void cRegistry::ExportReg(const Text& path) const {
    constexpr int kFileNotFound = 2;
    if (!KeyExists()) RaiseWin32(kFileNotFound);
    Text file = "REGEDIT4\r\n\r\n";
    AppendKey(file, ClassKey, StepsOf(SectionKey));
    if (const int code = ReplaceFile(path, file); code != 0) RaiseWin32(code);
}

}  // namespace rvl
