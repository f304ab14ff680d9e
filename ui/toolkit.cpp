#include "ui/toolkit.h"

#include <wx/app.h>
#include <wx/init.h>

namespace rvl {
namespace {

class ToolkitApp : public wxApp {
 public:
    bool OnInit() override { return true; }
};

bool Initialise() {
    static char program[] = "RVLClient";
    static char* arguments[] = {program, nullptr};
    int count = 1;
    wxApp::SetInstance(new ToolkitApp);  // the toolkit owns it
    if (!wxEntryStart(count, arguments)) return false;
    wxTheApp->SetExitOnFrameDelete(false);  // a closed dialog does not end the program
    return wxTheApp->CallOnInit();
}

}  // namespace

bool StartToolkit() {
    static const bool started = Initialise();
    return started;
}

}  // namespace rvl
