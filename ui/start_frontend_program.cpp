#include "runtime/terminate.h"
#include "session/local_client.h"
#include "session/start_frontend_process.h"
#include "ui/start_frontend_window.h"
#include "ui/window_process.h"
#include "ui/window_programs.h"

namespace rvl {

int RunStartFrontend(std::int32_t frontendId, const Text& title) {
    if (!StartWindowProcess("start-front-end window")) return kExitFatal;
    LocalClient connection(LocalClient::Role::UI);
    auto* window = new StartFrontendWindow;  // the toolkit owns it
    StartFrontendProcess process(connection, *window);
    window->SetQueryUnload([&process](UnloadMode) {
        process.Close();
        return true;
    });
    process.ShowModal(frontendId, title);
    return RunWindowProcess([&process] { process.Close(); });
}

}  // namespace rvl
