#include "platform/service_manager.h"

#include <memory>

#include "platform/error.h"
#include "platform/system_message.h"
#include "platform/win32/service_handle.h"
#include "platform/win32/service_start.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

/// Each name with its closing NUL, and one more at the end; nothing when there are none.
std::wstring DependencyList(const std::vector<Text>& names) {
    std::wstring list;
    for (const Text& name : names)
        list += Wide(name) + L'\0';
    return list.empty() ? list : list + L'\0';
}

DWORD TypeOf(const ServiceDescription& description) {
    return SERVICE_WIN32_OWN_PROCESS | (description.interactive ? SERVICE_INTERACTIVE_PROCESS : 0);
}

DWORD StartOf(const ServiceDescription& description) {
    return description.automaticStart ? SERVICE_AUTO_START : SERVICE_DEMAND_START;
}

ServiceState StateOf(DWORD state) {
    switch (state) {
        case SERVICE_STOPPED:
            return ServiceState::Stopped;
        case SERVICE_START_PENDING:
            return ServiceState::StartPending;
        case SERVICE_STOP_PENDING:
            return ServiceState::StopPending;
        default:  // running, or somehow paused, which this service does not let anybody do
            return ServiceState::Running;
    }
}

[[noreturn]] void Raise(int code) {
    throw Error(code, "ServiceManager", SystemMessage(code));
}

}  // namespace

int RegisterService(const ServiceDescription& description) {
    UniqueServiceHandle manager;
    if (const int code = OpenServiceManager(SC_MANAGER_CREATE_SERVICE, manager); code != 0) return code;
    const std::wstring dependencies = DependencyList(description.dependencies);
    const UniqueServiceHandle service(
        CreateServiceW(manager.get(), Wide(description.name).c_str(), Wide(description.displayName).c_str(),
                       SERVICE_ALL_ACCESS, TypeOf(description), StartOf(description), SERVICE_ERROR_NORMAL,
                       Wide(description.commandLine).c_str(), nullptr, nullptr,
                       dependencies.empty() ? nullptr : dependencies.c_str(),
                       Wide(description.account).c_str(), Wide(description.password).c_str()));
    return service ? 0 : LastError();
}

int UnregisterService(const Text& name) {
    UniqueServiceHandle service;
    if (const int code = OpenNamedService(name, DELETE, service); code != 0) return code;
    return DeleteService(service.get()) ? 0 : LastError();
}

int LaunchService(const Text& name) {
    UniqueServiceHandle service;
    if (const int code = OpenNamedService(name, SERVICE_START | SERVICE_QUERY_STATUS, service); code != 0)
        return code;
    return StartServiceW(service.get(), 0, nullptr) ? AwaitRunningService(service.get()) : LastError();
}

int SendStopControl(const Text& name) {
    UniqueServiceHandle service;
    if (const int code = OpenNamedService(name, SERVICE_STOP, service); code != 0) return code;
    SERVICE_STATUS status{};
    return ControlService(service.get(), SERVICE_CONTROL_STOP, &status) ? 0 : LastError();
}

int QueryServiceState(const Text& name, ServiceState& state) {
    state = ServiceState::NotInstalled;
    UniqueServiceHandle service;
    if (const int code = OpenNamedService(name, SERVICE_QUERY_STATUS, service); code != 0) return code;
    SERVICE_STATUS_PROCESS status{};
    const int code = QueryServiceProcess(service.get(), status);
    if (code == 0) state = StateOf(status.dwCurrentState);
    return code;
}

Text RegisteredServiceCommandLine(const Text& name) {
    UniqueServiceHandle service;
    const int code = OpenNamedService(name, SERVICE_QUERY_CONFIG, service);
    if (code == kServiceDoesNotExist) return "";
    if (code != 0) Raise(code);
    constexpr DWORD kCount = 8192 / sizeof(QUERY_SERVICE_CONFIGW);  // 8 KB: the most there is
    const auto buffer = std::make_unique<QUERY_SERVICE_CONFIGW[]>(kCount);
    DWORD size = 0;
    if (!QueryServiceConfigW(service.get(), buffer.get(), kCount * sizeof buffer[0], &size))
        Raise(LastError());
    return Narrow(buffer[0].lpBinaryPathName);
}

}  // namespace rvl::platform
