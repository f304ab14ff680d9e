#pragma once

#include <windows.h>

#include <winsvc.h>

#include <memory>

#include "platform/text.h"

namespace rvl::platform {

struct CloseServiceManagerHandle {
    void operator()(SC_HANDLE handle) const { CloseServiceHandle(handle); }
};

/// Owns a handle of the service manager. A service that is marked for deletion stays as long as anybody keeps
/// a handle to it: they are held for one operation only.
using UniqueServiceHandle = std::unique_ptr<SC_HANDLE__, CloseServiceManagerHandle>;

// The results are 0 or the code of a failure.

/// The manager itself, to which everybody may connect.
int OpenServiceManager(DWORD access, UniqueServiceHandle& manager);

/// A service. Everybody may ask for its state and configuration (SERVICE_QUERY_STATUS, SERVICE_QUERY_CONFIG);
/// what changes anything is for administrators and the system.
int OpenNamedService(const Text& name, DWORD access, UniqueServiceHandle& service);

int QueryServiceProcess(SC_HANDLE service, SERVICE_STATUS_PROCESS& status);

}  // namespace rvl::platform
