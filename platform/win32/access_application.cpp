#include "platform/win32/access_application.h"

#include <oleacc.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "platform/win32/automation.h"
#include "platform/win32/window_handle.h"

namespace rvl::platform {
namespace {

/// The window itself hands out the object where this Access does that.
ComPointer<IDispatch> AskWindow(HWND window, bool& busy) {
    const LPARAM objectModel = static_cast<DWORD>(OBJID_NATIVEOM);
    DWORD_PTR answer = 0;
    busy = SendMessageTimeoutW(window, WM_GETOBJECT, 0, objectModel, SMTO_ABORTIFHUNG, kAnswerMilliseconds,
                               &answer) == 0;
    void* object = nullptr;
    if (answer == 0 ||
        FAILED(ObjectFromLresult(static_cast<LRESULT>(answer), __uuidof(IDispatch), 0, &object)))
        return nullptr;
    return ComPointer<IDispatch>(static_cast<IDispatch*>(object));
}

struct FreeTaskMemory {
    void operator()(OLECHAR* text) const { CoTaskMemFree(text); }
};

std::wstring NameOf(IMoniker& moniker, IBindCtx& context) {
    OLECHAR* name = nullptr;
    if (FAILED(moniker.GetDisplayName(&context, nullptr, &name))) return {};
    const std::unique_ptr<OLECHAR, FreeTaskMemory> owned(name);
    return name;
}

bool EqualNoCase(std::wstring_view a, std::wstring_view b) {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                TRUE) == CSTR_EQUAL;
}

/// Access registers itself by its class and by the database that it has open. Other programs are not asked.
bool IsNameOfAccess(std::wstring_view name) {
    constexpr std::wstring_view kClasses[] = {L"!{73A4C9C1-D68D-11D0-98BF-00A0C90DC8D9}",
                                              L"!{8CC49940-3146-11CF-97A1-00AA00424A9F}"};
    constexpr std::wstring_view kBeginningsOfExtensions[] = {L".md", L".ad", L".acc"};
    if (std::ranges::any_of(kClasses, [&](std::wstring_view one) { return EqualNoCase(name, one); }))
        return true;
    const std::size_t dot = name.rfind(L'.');
    if (dot == name.npos) return false;
    return std::ranges::any_of(kBeginningsOfExtensions, [&](std::wstring_view beginning) {
        return EqualNoCase(name.substr(dot, beginning.size()), beginning);
    });
}

bool Owns(IDispatch& application, HWND window, bool& busy) {
    Variant handle;
    const HRESULT result = Invoke(application, L"hWndAccessApp", handle);
    busy = busy || IsBusyAnswer(result);
    const auto number = handle.AsNumber();
    return SUCCEEDED(result) && number && HwndOf(static_cast<WindowHandle>(*number)) == window;
}

ComPointer<IRunningObjectTable> RunningObjects() {
    IRunningObjectTable* table = nullptr;
    return ComPointer<IRunningObjectTable>(SUCCEEDED(GetRunningObjectTable(0, &table)) ? table : nullptr);
}

ComPointer<IDispatch> ObjectOf(IRunningObjectTable& table, IMoniker& moniker) {
    IUnknown* object = nullptr;
    if (table.GetObject(&moniker, &object) != S_OK) return nullptr;
    return QueryFor<IDispatch>(*ComPointer<IUnknown>(object));
}

ComPointer<IMoniker> Next(IEnumMoniker& monikers) {
    IMoniker* moniker = nullptr;
    return ComPointer<IMoniker>(monikers.Next(1, &moniker, nullptr) == S_OK ? moniker : nullptr);
}

ComPointer<IDispatch> FindAmongRunningObjects(HWND window, bool& busy) {
    const auto table = RunningObjects();
    IEnumMoniker* entries = nullptr;
    IBindCtx* bind = nullptr;
    if (!table || FAILED(table->EnumRunning(&entries))) return nullptr;
    const ComPointer<IEnumMoniker> monikers(entries);
    if (FAILED(CreateBindCtx(0, &bind))) return nullptr;
    const ComPointer<IBindCtx> context(bind);
    while (const auto moniker = Next(*monikers)) {
        if (!IsNameOfAccess(NameOf(*moniker, *context))) continue;
        auto object = ObjectOf(*table, *moniker);
        if (object && Owns(*object, window, busy)) return object;
    }
    return nullptr;
}

}  // namespace

bool IsBusyAnswer(HRESULT result) {
    constexpr auto kSuspended = static_cast<HRESULT>(0x800AC472);  // by the program's own language
    return result == RPC_E_CALL_REJECTED || result == RPC_E_SERVERCALL_RETRYLATER ||
           result == RPC_E_SERVERCALL_REJECTED || result == kSuspended;
}

ComPointer<IDispatch> AccessApplicationOf(HWND accessWindow, bool& busy) {
    auto object = AskWindow(accessWindow, busy);
    if (!object && !busy) object = FindAmongRunningObjects(accessWindow, busy);
    return object;
}

}  // namespace rvl::platform
