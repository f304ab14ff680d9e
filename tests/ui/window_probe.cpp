// Opens one of the windows with sample content and writes what its user does as lines to the output:
//   window_probe switchboard [entries [icon file]] | start | message [forced [text]] | notice | helper
//                | service | error | box [text]

#include <cstdio>
#include <ctime>
#include <map>
#include <memory>

#include "runtime/error_reporter.h"
#include "runtime/message_box.h"
#include "runtime/terminate.h"
#include "ui/helper_window_set.h"
#include "ui/service_window.h"
#include "ui/start_frontend_window.h"
#include "ui/switchboard_window.h"
#include "ui/toolkit.h"
#include "ui/window_dialogs.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

using Arguments = std::vector<Text>;

void Print(const Text& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

Text ArgumentOr(const Arguments& arguments, std::size_t index, const Text& other) {
    return index < arguments.size() ? arguments[index] : other;
}

/// The toolkit owns its windows.
template <class Window, class... Parameters>
Window* Made(Parameters&&... parameters) {
    return std::make_unique<Window>(std::forward<Parameters>(parameters)...).release();
}

bool PrintUnload(UnloadMode mode) {
    Print("unload " + UnloadModeName(mode));
    return true;
}

void AddEntries(SwitchboardView& view, int count, const Text& iconFile) {
    static const std::vector<Text> names = {"Orders", "Stock & Suppliers", "Customer Relations of the North",
                                            "Personnel"};
    view.ClearFrontends();
    for (int i = 0; i < count; ++i) {
        const auto index = static_cast<std::size_t>(i);
        const Text name = index < names.size() ? names[index] : "Front end " + NumberText(i);
        view.AddFrontend({17 + i, name, "1." + NumberText(i), iconFile});
    }
}

const std::vector<VersionHistoryRow> kHistory = {
    {"1.2", "2004-03-17",
     "Prints delivery notes.\r\nFaster search by customer number, also when only the first "
     "digits of it are known.",
     false},
    {"1.1", "2004-02-01", "Withdrawn: loses the second line of an address.", true},
    {"1.0", "2003-11-20", "First version.", false}};

int RunSwitchboard(const Arguments& arguments) {
    const int count = static_cast<int>(ParseLongOr(ArgumentOr(arguments, 1, "4"), 4));
    auto* window = Made<SwitchboardWindow>();
    window->SetQueryUnload(PrintUnload);
    window->Listen(
        {[](std::int32_t id, const Text& name) { Print("start " + NumberText(id) + " " + name); },
         [=](std::int32_t id) {
             Print("chosen " + NumberText(id));
             window->ShowHistory(kHistory);
         },
         [=] { Print(window->ShownTab() == SwitchboardView::Tab::Advanced ? "advanced" : "main"); }});
    static_cast<SwitchboardView*>(window)->Show();
    window->EnableAdvanced(count != 0);
    const std::clock_t begun = std::clock();
    AddEntries(*window, count, ArgumentOr(arguments, 2, ""));
    window->CallAfter([=] {
        const auto milliseconds = (std::clock() - begun) * 1000 / CLOCKS_PER_SEC;
        Print("filled in " + NumberText(milliseconds) + " ms");
    });
    return RunWindows();
}

int RunStart(const Arguments&) {
    auto* window = Made<StartFrontendWindow>();
    window->SetQueryUnload(PrintUnload);
    window->SetCaption("Stock & Suppliers");
    window->SetMessage("Stock & Suppliers is loading, please wait...");
    static_cast<StartFrontendView*>(window)->Show();
    return RunWindows();
}

/// What decides over a message here: it does as it is told and says so.
AdministratorMessageOperations MessageProbe(AdministratorMessageView& view) {
    return {[&view](const AdministratorMessageOrder& order) {
                view.SetCaption(order.title + " [01:40]");
                view.SetMessage(order.message);
                if (order.noContinue) view.DisableContinueButton();
                if (order.noContinue) view.DisableCloseButton();
                view.ShowOnTopWithoutFocus();
            },
            [&view] {
                Print("close now");
                view.Unload();
            },
            [&view] {
                Print("continue");
                view.Unload();
            }};
}

/// Opens what the function opens beside a helper window.
int RunHelper(bool shown, const std::function<void(HelperWindows&)>& open) {
    HelperWindowSet windows(MessageProbe, PrintUnload);
    windows.LoadHelperWindow("Ravelin Client Helper Debug Mode", shown);
    open(windows);
    return RunWindows();
}

int RunMessage(const Arguments& arguments) {
    AdministratorMessageOrder order;
    order.title = "Orders";
    order.noContinue = ArgumentOr(arguments, 1, "") == "forced";
    order.message =
        ArgumentOr(arguments, 2, "The server is being serviced at noon.\r\nPlease finish your work.");
    return RunHelper(false, [&](HelperWindows& windows) { windows.OpenAdministratorMessage(order); });
}

int RunNotice(const Arguments&) {
    return RunHelper(false, [](HelperWindows& windows) {
        windows.OpenNewVersionNotice(17, "Stock & Suppliers");
        windows.OpenNewVersionNotice(18, "Orders");
        Print(windows.IsNewVersionNoticeOpen(17) && !windows.IsNewVersionNoticeOpen(19) ? "open"
                                                                                        : "not open");
    });
}

/// Refuses the first time.
int RunService(const Arguments&) {
    auto* window = Made<ServiceWindow>("Ravelin Client Debug Mode");
    window->SetStatus("Connected to DEPLOY01 (192.168.10.4)");
    window->SetDiscoveryMethod("Broadcast");
    window->SetQueryUnload([refused = false](UnloadMode mode) mutable {
        PrintUnload(mode);
        return std::exchange(refused, true);
    });
    window->Show();
    return RunWindows();
}

int RunErrorDialog(const Arguments&) {
    ErrorReporter().ReportError("frmClientMain.Form_Load",
                                {3051,
                                 "Database",
                                 "The database engine cannot open the file. It is already opened exclusively "
                                 "by another user, or you need "
                                 "permission to view its data.",
                                 {},
                                 0,
                                 120},
                                false);
    return kExitNormal;
}

int RunBox(const Arguments& arguments) {
    const Text text = ArgumentOr(arguments, 1, "Orders & <Stock> cannot start.");
    Print(ButtonName(MsgBox(text, kButtonsYesNoCancel + kIconCritical)));
    return kExitNormal;
}

int RunProbe(const Arguments& arguments) {
    static WindowDialogs dialogs;
    static ErrorReporter reporter;
    InstallErrorSink(&reporter);
    InstallDialogs(&dialogs);
    if (!StartToolkit()) return kExitFatal;
    const std::map<Text, std::function<int(const Arguments&)>> windows = {
        {"switchboard", RunSwitchboard},
        {"start", RunStart},
        {"message", RunMessage},
        {"notice", RunNotice},
        {"helper", [](const Arguments&) { return RunHelper(true, [](HelperWindows&) {}); }},
        {"service", RunService},
        {"error", RunErrorDialog},
        {"box", RunBox}};
    return windows.at(arguments.at(0))(arguments);
}

}  // namespace
}  // namespace rvl

int main(int argc, char** argv) {
    return rvl::RunProbe({argv + 1, argv + argc});
}
