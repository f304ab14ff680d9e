#include "platform/registry.h"

#include <algorithm>
#include <cstring>

#include "platform/latin1_case.h"
#include "platform/win32/registry_key.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

struct StoredValue {
    DWORD type = REG_NONE;
    std::vector<BYTE> data;
};

/// The value may grow between two calls.
LSTATUS QueryValue(HKEY key, const std::wstring& name, StoredValue& value) {
    constexpr std::size_t kUsualSize = 512;
    value.data.resize(kUsualSize);
    for (;;) {
        auto size = static_cast<DWORD>(value.data.size());
        const LSTATUS code =
            RegQueryValueExW(key, name.c_str(), nullptr, &value.type, value.data.data(), &size);
        value.data.resize(size);
        if (code != ERROR_MORE_DATA) return code;
    }
}

/// The text ends before its closing NUL; some programs forget it, others write several.
Text TextOf(const StoredValue& value) {
    std::wstring text(value.data.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), value.data.data(), text.size() * sizeof(wchar_t));
    text.resize(text.find_last_not_of(L'\0') + 1);
    return Narrow(text);
}

/// Values of other types are nobody's here.
std::optional<RegistryValue> ValueOf(const StoredValue& value) {
    std::uint32_t number = 0;
    switch (value.type) {
        case REG_SZ:
            return TextOf(value);
        case REG_EXPAND_SZ:
            return ExpandableText{TextOf(value)};
        case REG_DWORD:
            if (value.data.size() != sizeof number) return std::nullopt;
            std::memcpy(&number, value.data.data(), sizeof number);
            return number;
        default:
            return std::nullopt;
    }
}

template <class Data>
StoredValue Stored(DWORD type, const Data* data, std::size_t count) {
    const BYTE* bytes = reinterpret_cast<const BYTE*>(data);
    return {type, std::vector<BYTE>(bytes, bytes + count * sizeof(Data))};
}

StoredValue StoredText(DWORD type, const Text& text) {
    const std::wstring wide = Wide(text);
    return Stored(type, wide.c_str(), wide.size() + 1);
}

StoredValue StoredForm(const RegistryValue& value) {
    if (const auto* number = std::get_if<std::uint32_t>(&value)) return Stored(REG_DWORD, number, 1);
    if (const auto* expandable = std::get_if<ExpandableText>(&value))
        return StoredText(REG_EXPAND_SZ, expandable->text);
    return StoredText(REG_SZ, std::get<Text>(value));
}

/// What a call gives for the indices from 0 on, in alphabetical order. A name that cannot become a Text is
/// nobody's here: no other operation could take it.
template <class NameAt>
std::vector<Text> NamesOf(RegistryRoot root, const Text& key, NameAt nameAt) {
    constexpr std::size_t kLongestName = 16384;
    std::vector<Text> names;
    const UniqueRegistryKey open = OpenRegistryKey(root, RegistryPath(key), KEY_READ);
    if (!open) return names;
    std::wstring buffer(kLongestName, L'\0');
    for (DWORD index = 0;; ++index) {
        auto size = static_cast<DWORD>(buffer.size());
        const LSTATUS code = nameAt(open.get(), index, buffer.data(), &size);
        if (code == ERROR_NO_MORE_ITEMS || IsMissing(code)) break;
        if (auto name = TryNarrow(std::wstring_view(buffer).substr(0, size)))
            names.push_back(std::move(*name));
    }
    std::sort(names.begin(), names.end(),
              [](const Text& one, const Text& other) { return LowerLatin1(one) < LowerLatin1(other); });
    return names;
}

}  // namespace

std::optional<RegistryValue> ReadRegistry(RegistryRoot root, const Text& key, const Text& name) {
    const UniqueRegistryKey open = OpenRegistryKey(root, RegistryPath(key), KEY_QUERY_VALUE);
    StoredValue value;
    if (!open || IsMissing(QueryValue(open.get(), RegistryName(name), value))) return std::nullopt;
    return ValueOf(value);
}

void WriteRegistry(RegistryRoot root, const Text& key, const Text& name, const RegistryValue& value) {
    const std::wstring valueName = RegistryName(name);
    const UniqueRegistryKey open = MakeRegistryKey(root, RegistryPath(key), KEY_SET_VALUE);
    const StoredValue stored = StoredForm(value);
    const LSTATUS code = RegSetValueExW(open.get(), valueName.c_str(), 0, stored.type, stored.data.data(),
                                        static_cast<DWORD>(stored.data.size()));
    if (code != ERROR_SUCCESS) RaiseRegistryError(code);
}

bool DeleteRegistryValue(RegistryRoot root, const Text& key, const Text& name) {
    const UniqueRegistryKey open = OpenRegistryKey(root, RegistryPath(key), KEY_SET_VALUE);
    return open && !IsMissing(RegDeleteValueW(open.get(), RegistryName(name).c_str()));
}

bool RegistryKeyExists(RegistryRoot root, const Text& key) {
    return OpenRegistryKey(root, RegistryPath(key), KEY_QUERY_VALUE) != nullptr;
}

void CreateRegistryKey(RegistryRoot root, const Text& key) {
    MakeRegistryKey(root, RegistryPath(key), KEY_QUERY_VALUE);
}

bool DeleteRegistryKey(RegistryRoot root, const Text& key) {
    const std::wstring path = RegistryPath(key);
    if (path.empty()) RaiseRegistryError(ERROR_ACCESS_DENIED);
    return DeleteRegistryTree(root, path);
}

std::vector<Text> RegistryValueNames(RegistryRoot root, const Text& key) {
    return NamesOf(root, key, [](HKEY open, DWORD index, wchar_t* name, DWORD* size) {
        return RegEnumValueW(open, index, name, size, nullptr, nullptr, nullptr, nullptr);
    });
}

std::vector<Text> RegistrySubkeys(RegistryRoot root, const Text& key) {
    return NamesOf(root, key, [](HKEY open, DWORD index, wchar_t* name, DWORD* size) {
        return RegEnumKeyExW(open, index, name, size, nullptr, nullptr, nullptr, nullptr);
    });
}

}  // namespace rvl::platform
