#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tools/deployserver/console.h"
#include "tools/deployserver/start_decisions.h"
#include "tools/deployserver/version_history.h"

namespace rvl::deployserver {

/// Carries out what the administrator orders while the server runs, one line at a time. What an order comes
/// to is printed, also that it makes no sense or reaches nobody.
class AdministratorOrders {
 public:
    /// What the orders need of the server.
    class Host {
     public:
        virtual ~Host() = default;
        virtual std::vector<std::shared_ptr<Workstation>> LoggedIn() const = 0;
        virtual void StopServing() = 0;
    };

    /// `historyFile` may be empty.
    AdministratorOrders(Host& host, const Console& console, StartDecisions& starts, VersionHistory& history,
                        Text historyFile);

    void CarryOut(const std::string& utf8);

 private:
    using Words = std::vector<Text>;

    /// A message to a workstation, and the line that tells of it.
    struct Letter {
        std::shared_ptr<Workstation> workstation;
        Text message;
        Text line;
    };
    using Letters = std::vector<Letter>;

    void Obey(const Words& words);
    void Close(const Words& words);
    void ShowMessage(const Words& words);
    void Start(const Words& words);
    void Updated(const Words& words);
    void Deny(const Words& words);
    void Allow(const Words& words);
    void Stop(const Words& words);

    void Send(const Letters& letters, const Text& reasonForNone) const;
    void NotDone(const Text& reason) const { m_console.Outcome("NOT DONE: " + reason); }
    bool IsUserKnown(const Text& user) const;
    bool IsFrontendKnown(std::int32_t frontendId) const;
    Text OrUnknown(const Text& user, const Text& reason) const;

    Host& m_host;
    const Console& m_console;
    StartDecisions& m_starts;
    VersionHistory& m_history;
    const Text m_historyFile;
};

}  // namespace rvl::deployserver
