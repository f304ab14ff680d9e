#include "tools/msaccess/win32/running_application.h"

#include "platform/win32/wide.h"
#include "tools/msaccess/win32/automation_object.h"
#include "util/path_text.h"

namespace rvl::msaccess {
namespace {

using platform::ComPointer;
using Property = AutomationObject::Property;

constexpr CLSID kClass{0x73A4C9C1, 0xD68D, 0x11D0, {0x98, 0xBF, 0x00, 0xA0, 0xC9, 0x0D, 0xC8, 0xD9}};

Property TextProperty(const wchar_t* name, const Text& text) {
    return {name, [wide = platform::Wide(text)](VARIANT& value) {
                value.vt = VT_BSTR;
                value.bstrVal = platform::Bstr(wide).release();
            }};
}

Property NumberProperty(const wchar_t* name, LONG number) {
    return {name, [number](VARIANT& value) {
                value.vt = VT_I4;
                value.lVal = number;
            }};
}

/// What another program is handed does not change with the database.
Property CurrentProject(const Text& database) {
    return {L"CurrentProject", [database](VARIANT& value) {
                value.vt = VT_DISPATCH;
                value.pdispVal = AutomationObject::Create({TextProperty(L"FullName", database),
                                                           TextProperty(L"Name", FileNameOf(database))})
                                     .release();
            }};
}

ComPointer<IMoniker> FileMoniker(const Text& path) {
    IMoniker* moniker = nullptr;
    return ComPointer<IMoniker>(
        SUCCEEDED(CreateFileMoniker(platform::Wide(path).c_str(), &moniker)) ? moniker : nullptr);
}

}  // namespace

ComPointer<IDispatch> CreateApplication(HWND mainWindow, const Text& database) {
    return AutomationObject::Create({TextProperty(L"Name", "Microsoft Access"),
                                     TextProperty(L"Version", "11.0"), NumberProperty(L"Build", 8166),
                                     NumberProperty(L"hWndAccessApp", HandleToLong(mainWindow)),
                                     CurrentProject(database)});
}

RunningApplication::RunningApplication(IDispatch& application, const Text& database) {
    IRunningObjectTable* table = nullptr;
    if (FAILED(GetRunningObjectTable(0, &table))) return;
    m_table.reset(table);
    RegisterActiveObject(&application, kClass, ACTIVEOBJECT_STRONG, &m_byClass);
    if (const auto moniker = database.empty() ? nullptr : FileMoniker(database))
        m_table->Register(ROTFLAGS_REGISTRATIONKEEPSALIVE, &application, moniker.get(), &m_byDatabase);
}

RunningApplication::~RunningApplication() {
    if (m_byClass != 0) RevokeActiveObject(m_byClass, nullptr);
    if (m_byDatabase != 0) m_table->Revoke(m_byDatabase);
}

}  // namespace rvl::msaccess
