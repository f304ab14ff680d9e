#include "ui/toolkit.h"

#include <wx/app.h>
#include <wx/debug.h>
#include <wx/dialog.h>
#include <wx/evtloop.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/utils.h>

#include "runtime/log_file.h"
#include "runtime/terminate.h"
#include "ui/wx_text.h"
#include "util/handle_error.h"

namespace rvl {
namespace {

/// What the toolkit complains about stands in the log; it would open boxes of its own.
class ToolkitLog : public wxLog {
 public:
    ~ToolkitLog() override { SetActiveTarget(nullptr); }

 protected:
    void DoLogTextAtLevel(wxLogLevel level, const wxString& text) override {
        if (level <= wxLOG_Warning) Log("Toolkit: " + FromWx(text));
    }
};

void LogAssert(const wxString& file, int line, const wxString& procedure, const wxString& condition,
               const wxString& message) {
    Log("Toolkit: " + FromWx(file) + ":" + std::to_string(line) + " " + FromWx(procedure) + ": " +
        FromWx(condition) + " " + FromWx(message));
}

class ToolkitApp : public wxApp {
 public:
    bool OnInit() override { return true; }

    bool OnExceptionInMainLoop() override {
        HandleError("Toolkit");
        return true;  // the loop goes on
    }
};

/// Keeps GTK, which reads this once as it starts, from loading the graphics driver of the display: it takes
/// 45 MB, and no window here draws with it. Programs that are started later do not inherit it.
class WithoutGraphicsDriver {
 public:
    WithoutGraphicsDriver() {
        if (m_ours) wxSetEnv(kVariable, "disable");
    }
    ~WithoutGraphicsDriver() {
        if (m_ours) wxUnsetEnv(kVariable);
    }
    WithoutGraphicsDriver(const WithoutGraphicsDriver&) = delete;
    WithoutGraphicsDriver& operator=(const WithoutGraphicsDriver&) = delete;

 private:
    static constexpr const char* kVariable = "GDK_GL";
    const bool m_ours = !wxGetEnv(kVariable, nullptr);
};

bool Initialise() {
    static char program[] = "RVLClient";
    static char* arguments[] = {program, nullptr};
    int count = 1;
    wxSetAssertHandler(LogAssert);
    wxApp::SetInstance(new ToolkitApp);  // the toolkit owns it
    {
        const WithoutGraphicsDriver plain;
        if (!wxEntryStart(count, arguments)) return false;
    }
    static ToolkitLog log;  // takes itself out before it goes
    delete wxLog::SetActiveTarget(&log);
    wxTheApp->SetExitOnFrameDelete(false);  // a closed dialog does not end the program
    return wxTheApp->CallOnInit();
}

bool g_quit = false;

/// Nobody need answer them any more; who waits for an answer gets none of the buttons.
void EndModalDialogs() {
    for (wxWindow* window : wxTopLevelWindows) {
        auto* const dialog = dynamic_cast<wxDialog*>(window);
        if (dialog != nullptr && dialog->IsModal()) dialog->EndModal(wxID_NONE);
    }
}

}  // namespace

bool StartToolkit() {
    static const bool started = Initialise();
    return started;
}

int RunWindows() {
    if (!g_quit) wxTheApp->OnRun();
    return kExitNormal;
}

void QuitWindows() {
    g_quit = true;
    EndModalDialogs();
    // Also from inside the loop of a dialog, where the application's own call would do nothing.
    if (wxEventLoopBase* const loop = wxTheApp->GetMainLoop()) loop->ScheduleExit();
}

}  // namespace rvl
