#include "platform/win32/service_handle.h"

#include "platform/win32/unique_handle.h"
#include "platform/win32/wide.h"

namespace rvl::platform {

int OpenServiceManager(DWORD access, UniqueServiceHandle& manager) {
    manager.reset(OpenSCManagerW(nullptr, SERVICES_ACTIVE_DATABASEW, access));
    return manager ? 0 : LastError();
}

int OpenNamedService(const Text& name, DWORD access, UniqueServiceHandle& service) {
    UniqueServiceHandle manager;
    if (const int code = OpenServiceManager(SC_MANAGER_CONNECT, manager); code != 0) return code;
    service.reset(OpenServiceW(manager.get(), Wide(name).c_str(), access));
    return service ? 0 : LastError();
}

int QueryServiceProcess(SC_HANDLE service, SERVICE_STATUS_PROCESS& status) {
    DWORD size = 0;
    const BOOL known = QueryServiceStatusEx(service, SC_STATUS_PROCESS_INFO, reinterpret_cast<BYTE*>(&status),
                                            sizeof status, &size);
    return known ? 0 : LastError();
}

}  // namespace rvl::platform
