#include "platform/shell_link.h"

#include <windows.h>

#include <shlobj.h>
#include <shlwapi.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/files.h"
#include "platform/full_path.h"
#include "platform/link_file.h"
#include "platform/win32/com.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

constexpr int kFileNotFound = 2;
constexpr int kBadFormat = 11;
constexpr int kInvalidParameter = 87;

constexpr int KnownShowCommand(int command) {
    return command == 3 || command == 7 ? command : 1;
}

std::wstring WideUpToNul(const Text& text) {
    return Wide(TextView(text).substr(0, text.find('\0')));
}

bool AllFit(const ShellLink& link) {
    constexpr std::size_t kLongest = 0xFFFF;
    return std::ranges::all_of(
        std::initializer_list<const Text*>{&link.description, &link.workingDirectory, &link.arguments,
                                           &link.iconLocation},
        [](const Text* text) { return std::min(text->size(), text->find('\0')) <= kLongest; });
}

// The shell's object and what it says

ComPointer<IShellLinkW> CreateLink(HRESULT& result) {
    return CreateObject<IShellLinkW>(__uuidof(::ShellLink), result);
}

/// A text that is not set is left out of the file.
HRESULT Describe(IShellLinkW& object, const ShellLink& link) {
    using Set = HRESULT (STDMETHODCALLTYPE IShellLinkW::*)(const wchar_t*);
    const std::pair<Set, const Text&> texts[] = {{&IShellLinkW::SetPath, link.target},
                                                 {&IShellLinkW::SetArguments, link.arguments},
                                                 {&IShellLinkW::SetWorkingDirectory, link.workingDirectory},
                                                 {&IShellLinkW::SetDescription, link.description}};
    HRESULT result = object.SetShowCmd(KnownShowCommand(link.showCommand));
    for (const auto& [set, text] : texts)
        if (const std::wstring wide = WideUpToNul(text); SUCCEEDED(result) && !wide.empty())
            result = (object.*set)(wide.c_str());
    const std::wstring icon = WideUpToNul(link.iconLocation);
    if (SUCCEEDED(result) && (!icon.empty() || link.iconIndex != 0))
        result = object.SetIconLocation(icon.c_str(), link.iconIndex);
    return result;
}

/// What `get` writes into a buffer that holds the longest text of the format.
template <class Get>
Text Told(Get get) {
    std::wstring buffer(0x10000, L'\0');
    if (FAILED(get(buffer.data(), static_cast<int>(buffer.size())))) return "";
    return Narrow(std::wstring_view(buffer).substr(0, buffer.find(L'\0')));
}

void TakeTexts(IShellLinkW& object, ShellLink& link) {
    link.target = Told([&](wchar_t* text, int size) {
        return object.GetPath(text, size, nullptr, SLGP_UNCPRIORITY | SLGP_RAWPATH);
    });
    link.arguments = Told([&](wchar_t* text, int size) { return object.GetArguments(text, size); });
    link.workingDirectory =
        Told([&](wchar_t* text, int size) { return object.GetWorkingDirectory(text, size); });
    link.description = Told([&](wchar_t* text, int size) { return object.GetDescription(text, size); });
    link.iconLocation =
        Told([&](wchar_t* text, int size) { return object.GetIconLocation(text, size, &link.iconIndex); });
}

// Its bytes

int ReadAll(IStream& stream, std::string& bytes) {
    STATSTG state{};
    HRESULT result = stream.Stat(&state, STATFLAG_NONAME);
    if (SUCCEEDED(result)) result = stream.Seek({}, STREAM_SEEK_SET, nullptr);
    if (FAILED(result)) return CodeOf(result);
    bytes.resize(static_cast<std::size_t>(state.cbSize.QuadPart));
    return CodeOf(stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr));
}

int FormatLink(const ShellLink& link, std::string& bytes) {
    HRESULT result = S_OK;
    const auto object = CreateLink(result);
    if (!object) return CodeOf(result);
    result = Describe(*object, link);
    const auto persistent = QueryFor<IPersistStream>(*object);
    const ComPointer<IStream> stream(SHCreateMemStream(nullptr, 0));
    if (!persistent || !stream) return CodeOf(E_OUTOFMEMORY);
    if (SUCCEEDED(result)) result = persistent->Save(stream.get(), TRUE);
    return SUCCEEDED(result) ? ReadAll(*stream, bytes) : CodeOf(result);
}

/// Not every shell tells what it has read there.
int ShowCommandIn(const std::string& bytes) {
    constexpr std::size_t kPlace = 0x3C;
    std::int32_t command = 0;
    std::memcpy(&command, bytes.data() + kPlace, sizeof command);
    return KnownShowCommand(command);
}

/// The shell takes other things for shortcuts, too.
bool HasLinkHeader(const std::string& bytes) {
    constexpr std::string_view kBeginning("\x4C\0\0\0\x01\x14\x02\0\0\0\0\0\xC0\0\0\0\0\0\0\x46", 20);
    constexpr std::size_t kHeaderSize = 0x4C;
    return bytes.starts_with(kBeginning) && bytes.size() >= kHeaderSize;
}

int ParseLink(const std::string& bytes, ShellLink& link) {
    HRESULT result = S_OK;
    if (!HasLinkHeader(bytes)) return kBadFormat;
    const auto object = CreateLink(result);
    if (!object) return CodeOf(result);
    const auto persistent = QueryFor<IPersistStream>(*object);
    const ComPointer<IStream> stream(
        SHCreateMemStream(reinterpret_cast<const BYTE*>(bytes.data()), static_cast<UINT>(bytes.size())));
    if (!persistent || !stream) return CodeOf(E_OUTOFMEMORY);
    if (FAILED(persistent->Load(stream.get()))) return kBadFormat;
    ShellLink read;
    TakeTexts(*object, read);
    read.showCommand = ShowCommandIn(bytes);
    link = std::move(read);
    return 0;
}

/// Without dialogs the time-out stands in the upper half of the flags.
DWORD ResolveFlags(std::uint32_t flags, int timeOutMilliseconds) {
    constexpr int kLongest = 0xFFFF, kHalfBits = 16;
    if ((flags & SLR_NO_UI) == 0) return flags;
    return (flags & kLongest) | static_cast<DWORD>(std::clamp(timeOutMilliseconds, 0, kLongest)) << kHalfBits;
}

/// From the file: where it is allowed to the shell writes there what it has found out.
int FindTarget(const Text& path, DWORD flags, HWND window, ShellLink& link) {
    HRESULT result = S_OK;
    const auto object = CreateLink(result);
    const auto persistent = object ? QueryFor<IPersistFile>(*object) : nullptr;
    if (!persistent) return CodeOf(FAILED(result) ? result : E_NOINTERFACE);
    if (FAILED(persistent->Load(Wide(path).c_str(), STGM_READ))) return kBadFormat;
    if (object->Resolve(window, flags) != S_OK) return kFileNotFound;
    TakeTexts(*object, link);
    return FileExists(link.target) || DirectoryExists(link.target) ? 0 : kFileNotFound;
}

}  // namespace

int WriteShellLink(const Text& path, const ShellLink& link) {
    if (!AllFit(link)) return kInvalidParameter;
    ShellLink absolute = link;
    absolute.target.resize(std::min(link.target.size(), link.target.find('\0')));
    if (!absolute.target.empty())
        if (const int code = FullPath(absolute.target, absolute.target); code != 0) return code;
    const ComScope com;
    std::string bytes;
    const int code = FormatLink(absolute, bytes);
    return code != 0 ? code : ReplaceLinkFile(path, bytes);
}

int ReadShellLink(const Text& path, ShellLink& link) {
    const ComScope com;
    std::string bytes;
    const int code = ReadLinkFile(path, bytes);
    return code != 0 ? code : ParseLink(bytes, link);
}

int ResolveShellLink(const Text& path, std::uint32_t flags, std::intptr_t window, int timeOutMilliseconds,
                     ShellLink& link) {
    const ComScope com;
    if (const int code = ReadShellLink(path, link); code != 0) return code;
    return FindTarget(path, ResolveFlags(flags, timeOutMilliseconds), reinterpret_cast<HWND>(window), link);
}

}  // namespace rvl::platform
