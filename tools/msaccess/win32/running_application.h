#pragma once

#include "platform/text.h"
#include "platform/win32/com.h"

namespace rvl::msaccess {

/// The Application object of an Access that shows this main window and has this database open (a full path;
/// empty: none).
platform::ComPointer<IDispatch> CreateApplication(HWND mainWindow, const Text& database);

/// Has an Application stand among the running objects for as long as this lives, by its class and by its
/// database.
class RunningApplication {
 public:
    RunningApplication(IDispatch& application, const Text& database);
    ~RunningApplication();
    RunningApplication(const RunningApplication&) = delete;
    RunningApplication& operator=(const RunningApplication&) = delete;

 private:
    platform::ComPointer<IRunningObjectTable> m_table;
    DWORD m_byClass = 0, m_byDatabase = 0;  ///< 0 while it is not there
};

}  // namespace rvl::msaccess
