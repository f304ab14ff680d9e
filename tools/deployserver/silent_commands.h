#pragma once

#include "tools/deployserver/job.h"

namespace rvl::deployserver {

/// Commands that a workstation answers only when they fail. It handles messages in order: once it has
/// answered a request that follows them, they have been handled, and their errors have come.
class SilentCommands {
 public:
    enum class Taken { Nothing, Error, AllHandled };

    explicit SilentCommands(Workstation& workstation) : m_workstation(workstation) {}

    void Send(const Text& command, const std::vector<Text>& params);

    /// Sends the request whose answer says that all commands before it have been handled.
    void SendMarker();

    /// Takes an error, which is printed, or the answer to the marker; Nothing is neither.
    Taken Take(const Message& message);

    bool AnySent() const { return m_sent; }
    int Errors() const { return m_errors; }
    void Reset();  ///< as if nothing had been sent

 private:
    Workstation& m_workstation;
    bool m_sent = false;
    int m_errors = 0;
};

}  // namespace rvl::deployserver
