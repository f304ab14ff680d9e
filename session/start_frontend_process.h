#pragma once

#include <cstdint>
#include <vector>

#include "runtime/timer.h"
#include "session/service_commands.h"
#include "session/service_connection.h"
#include "session/start_frontend_view.h"

namespace rvl {

/// The process of a shortcut (frmClientStartFrontend): asks for the start of one front end, waits until the
/// service has dealt with that and ends. Connection and view outlive it, and it outlives its window's
/// unloading.
class StartFrontendProcess : private ConnectionOwner {
 public:
    StartFrontendProcess(ServiceConnection& connection, StartFrontendView& view);

    void ShowModal(std::int32_t frontendId, const Text& title);
    void Close();  ///< the user closed the window

 private:
    using Parameters = std::vector<Text>;

    void OnConnectionLost() override;
    void OnConnectFailed() override;
    void OnMessage(const Text& command, const Parameters& params) override;

    void AddCommands();
    void RequestStart();
    void SetServerAvailable(bool available);
    void QuitSoon();
    void QuitWhenSafe();
    void TimedOut();
    void Abort(const Text& message, const Text& errorCode);
    Text UnableToStart() const;
    void Stop();
    void Unload();

    ServiceConnection& m_connection;
    StartFrontendView& m_view;
    ServiceCommands m_commands;
    CTimer tmrTimeout, tmrQuitTime;
    std::int32_t m_frontendId = 0;
    Text m_title;
    bool m_serverAvailable = false;
    bool m_requested = false;
    bool m_stopped = false;   ///< whatever happens from now on counts no more
    bool m_unloaded = false;  ///< the window has gone
};

}  // namespace rvl
