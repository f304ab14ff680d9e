#include "platform/access_database.h"

#include <windows.h>

#include "platform/win32/automation.h"
#include "platform/win32/question.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

ComPointer<IDispatch> CreateEngine(const wchar_t* name) {
    CLSID classId{};
    HRESULT result = CLSIDFromProgID(name, &classId);
    return SUCCEEDED(result) ? CreateObject<IDispatch>(classId, result) : nullptr;
}

ComPointer<IDispatch> ObjectFrom(IDispatch& object, const wchar_t* member,
                                 const std::vector<Variant>& arguments = {}) {
    Variant value;
    return SUCCEEDED(Invoke(object, member, value, arguments)) ? value.AsObject() : nullptr;
}

/// Not for this program alone, and to read.
ComPointer<IDispatch> OpenDatabase(IDispatch& engine, const std::wstring& path) {
    std::vector<Variant> arguments;
    arguments.emplace_back(path);
    arguments.emplace_back(false);
    arguments.emplace_back(true);
    return ObjectFrom(engine, L"OpenDatabase", arguments);
}

Text AccessVersion(IDispatch& database) {
    const auto properties = ObjectFrom(database, L"Properties");
    if (!properties) return "";
    std::vector<Variant> name;
    name.emplace_back(std::wstring_view(L"AccessVersion"));
    const auto property = ObjectFrom(*properties, L"Item", name);
    Variant value;
    if (!property || FAILED(Invoke(*property, L"Value", value))) return "";
    return value.AsText().value_or("");
}

Text ReadAccessVersion(const wchar_t* engineName, const std::wstring& path) {
    const auto engine = CreateEngine(engineName);
    const auto database = engine ? OpenDatabase(*engine, path) : nullptr;
    if (!database) return "";
    Text version = AccessVersion(*database);
    Variant nothing;
    Invoke(*database, L"Close", nothing);
    return version;
}

/// The database engine of any Access, the newest first; there may be none that this program can load.
Text AskEngines(const std::wstring& path) {
    for (const wchar_t* engine : {L"DAO.DBEngine.120", L"DAO.DBEngine.36", L"DAO.DBEngine.35"})
        if (Text version = ReadAccessVersion(engine, path); !version.empty()) return version;
    return "";
}

}  // namespace

Text DatabaseAccessVersion(const Text& path) {
    constexpr DWORD kPatience = 5000;
    const Question<Text> version([path = Wide(path)] { return AskEngines(path); });
    return version.Wait(kPatience).value_or("");
}

}  // namespace rvl::platform
