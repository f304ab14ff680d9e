#pragma once

#include "platform/text.h"

namespace rvl {

/// The service's part in replacing the executable: a new one that the server has delivered waits until no
/// local connection is left, then a process of the new one takes over from the stopping service.
class SelfUpdate {
 public:
    class Host {
     public:
        virtual ~Host() = default;
        virtual int ConnectedClients() const = 0;
        virtual void TellLocalProcesses(const Text& newExecutable) = 0;
        virtual void StopForUpdate() = 0;
    };

    explicit SelfUpdate(Host& host) : m_host(host) {}

    /// The new executable that waits; empty when there is none. New local connections are refused meanwhile.
    const Text& PendingPath() const { return m_pendingPath; }

    /// A new executable has been delivered: begins the update, or tells the local processes to wait for it.
    void Accept(const Text& newExecutable);

    /// An update that was cut off with the whole machine has nobody left to say that it is over.
    void EndAbandonedUpdate() const;

    /// True when the update has begun; the service is then stopping.
    bool MaybeUpgradeNow();

 private:
    bool MayUpgradeNow() const;
    bool StartUpdateProcess() const;

    Host& m_host;
    Text m_pendingPath;
    bool m_starting = false;  ///< the update process; events are handled meanwhile
};

}  // namespace rvl
