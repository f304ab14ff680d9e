#include <memory>

#include "runtime/terminate.h"
#include "session/administrator_message.h"
#include "session/helper_process.h"
#include "session/local_client.h"
#include "session/user_desktop.h"
#include "ui/helper_window_set.h"
#include "ui/window_process.h"
#include "ui/window_programs.h"

namespace rvl {
namespace {

AdministratorMessageFactory MessagesOn(Desktop& desktop) {
    return [&desktop](AdministratorMessageView& view) {
        const auto message = std::make_shared<AdministratorMessage>(desktop, view);
        return AdministratorMessageOperations{
            [message](const AdministratorMessageOrder& order) { message->ShowDialog(order); },
            [message] { message->CloseNow(); }, [message] { message->ContinueWorking(); }};
    };
}

}  // namespace

int RunHelper(const UpgradeWait& upgradeWait) {
    if (!StartWindowProcess("helper")) return kExitFatal;
    UserDesktop desktop;
    LocalClient connection(LocalClient::Role::Helper);
    HelperProcess* process = nullptr;
    HelperWindowSet windows(MessagesOn(desktop), [&process](UnloadMode mode) {
        process->QueryUnload(mode);
        return true;
    });
    HelperProcess helper(connection, desktop, windows, upgradeWait);
    process = &helper;
    helper.Load();
    return RunWindowProcess([&helper] { helper.QueryUnload(UnloadMode::SessionEnding); });
}

}  // namespace rvl
