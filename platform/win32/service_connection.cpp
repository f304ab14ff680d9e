#include "platform/win32/service_connection.h"

#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "platform/win32/run_on_thread.h"
#include "platform/win32/service_status.h"
#include "platform/win32/started_by_manager.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

/// One attempt to become the service, shared with the system's threads.
struct Connection {
    std::wstring name;
    std::function<void(int)> control;
    std::once_flag answered;
    std::promise<int> answer;   ///< whether it has become one: 0 or a code
    std::promise<void> ending;  ///< lets the service's main function return

    void Answer(int code) {
        std::call_once(answered, [&] { answer.set_value(code); });
    }
};

/// The one attempt that matters. It outlives what other threads do while the process ends.
std::shared_ptr<Connection>& Current() {
    static auto& current = *new std::shared_ptr<Connection>;
    return current;
}

/// The service will stop when it is told to: from now on nobody shall take it for a running one.
DWORD WINAPI OnControl(DWORD control, DWORD, void*, void* connection) noexcept {
    if (control == SERVICE_CONTROL_STOP || control == SERVICE_CONTROL_SHUTDOWN)
        AdvanceServiceStatus(SERVICE_STOP_PENDING);
    static_cast<Connection*>(connection)->control(static_cast<int>(control));
    return NO_ERROR;
}

/// Stays as long as the service: not every system lets one go on whose main function has returned.
void WINAPI ServiceMain(DWORD, wchar_t**) noexcept {
    const std::shared_ptr<Connection> connection = Current();
    const SERVICE_STATUS_HANDLE manager =
        RegisterServiceCtrlHandlerExW(connection->name.c_str(), OnControl, connection.get());
    if (manager == nullptr) return connection->Answer(LastError());
    BeginServiceStatus(manager);
    connection->Answer(0);
    connection->ending.get_future().wait();
}

/// Returns when the service has stopped.
void Dispatch(Connection& connection) {
    SERVICE_TABLE_ENTRYW table[] = {{connection.name.data(), ServiceMain}, {nullptr, nullptr}};
    const BOOL connected = StartServiceCtrlDispatcherW(table);
    connection.Answer(connected ? ERROR_SERVICE_NEVER_STARTED : LastError());
}

}  // namespace

/// A process started by somebody else is spared the attempt, which takes ten seconds under Wine.
int ConnectToServiceManager(const Text& serviceName, std::function<void(int)> control) {
    if (!MayBeStartedByServiceManager()) return ERROR_FAILED_SERVICE_CONTROLLER_CONNECT;
    const auto connection = std::make_shared<Connection>();
    connection->name = Wide(serviceName);
    connection->control = std::move(control);
    Current() = connection;
    if (!RunOnThread([connection] { Dispatch(*connection); })) return ERROR_NOT_ENOUGH_MEMORY;
    const int code = connection->answer.get_future().get();
    if (code != 0) Current() = nullptr;
    return code;
}

void DisconnectFromServiceManager(int exitCode) {
    EndServiceStatus(static_cast<DWORD>(exitCode));
    if (const auto connection = std::exchange(Current(), nullptr)) connection->ending.set_value();
}

}  // namespace rvl::platform
