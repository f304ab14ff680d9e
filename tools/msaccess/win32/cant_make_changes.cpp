#include "tools/msaccess/win32/cant_make_changes.h"

#include "platform/win32/wide.h"

namespace rvl::msaccess {
namespace {

constexpr const wchar_t* kLabelClass = L"MSOUNISTAT";

/// The system's label under the name that Access gives its own.
void RegisterLabelClass() {
    WNDCLASSEXW label{};
    label.cbSize = sizeof label;
    GetClassInfoExW(nullptr, L"STATIC", &label);
    label.lpszClassName = kLabelClass;
    label.hInstance = GetModuleHandleW(nullptr);
    RegisterClassExW(&label);
}

INT_PTR CALLBACK OnDialogMessage(HWND dialog, UINT message, WPARAM, LPARAM) noexcept {
    if (message != WM_CLOSE) return FALSE;
    DestroyWindow(dialog);
    return TRUE;
}

}  // namespace

HWND ShowCantMakeChangesDialog(HWND owner, const Text& message) {
    RegisterLabelClass();
    HINSTANCE program = GetModuleHandleW(nullptr);
    HWND dialog = CreateWindowExW(WS_EX_DLGMODALFRAME, L"#32770", L"Microsoft Access",
                                  WS_POPUP | WS_CAPTION | WS_SYSMENU, 180, 220, 580, 110, owner, nullptr,
                                  program, nullptr);
    SetWindowLongPtrW(dialog, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(OnDialogMessage));
    CreateWindowExW(0, kLabelClass, platform::Wide(message).c_str(), WS_CHILD | WS_VISIBLE, 20, 20, 540, 24,
                    dialog, nullptr, program, nullptr);
    ShowWindow(dialog, SW_SHOW);
    return dialog;
}

}  // namespace rvl::msaccess
