#include "runtime/terminate.h"
#include "session/local_client.h"
#include "session/switchboard.h"
#include "ui/switchboard_window.h"
#include "ui/window_process.h"
#include "ui/window_programs.h"

namespace rvl {

int RunSwitchboard(const UpgradeWait& upgradeWait) {
    if (!StartWindowProcess("switchboard")) return kExitFatal;
    LocalClient connection(LocalClient::Role::UI);
    auto* window = new SwitchboardWindow;  // the toolkit owns it
    Switchboard switchboard(connection, *window, upgradeWait);
    window->Listen({[&switchboard](std::int32_t frontendId, const Text& name) {
                        switchboard.StartFrontend(frontendId, name);
                    },
                    [&switchboard](std::int32_t frontendId) { switchboard.FrontendChosen(frontendId); },
                    [&switchboard] { switchboard.TabChanged(); }});
    window->SetQueryUnload([&switchboard](UnloadMode mode) {
        switchboard.QueryUnload(mode);
        return true;
    });
    switchboard.Load();
    return RunWindowProcess([&switchboard] { switchboard.QueryUnload(UnloadMode::SessionEnding); });
}

}  // namespace rvl
