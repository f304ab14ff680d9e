#pragma once

#include <memory>
#include <stdexcept>

#include "platform/started_process.h"
#include "tests/support/child_process.h"
#include "tests/support/virtual_display.h"
#include "tests/support/workstation.h"

namespace rvl::test {

/// The stand-in for Microsoft Access on a database that holds its orders ("hang"; empty: none), for as long
/// as this lives.
class RunningMsaccess {
 public:
    explicit RunningMsaccess(const std::string& order = "") {
        WriteHostFile(DriveC() + "/fe/orders.mdb", "any\r\nmsaccess: " + order + "\r\n");
        int error = 0;
        process = platform::StartedProcess::Start("\"" RVL_MSACCESS "\" \"C:\\fe\\orders.mdb\"", error);
        if (!process) throw std::runtime_error("msaccess does not start");
    }
    ~RunningMsaccess() {
        if (!process) return;
        KillProcess(process->ProcessId());
        Ended();
    }
    RunningMsaccess(const RunningMsaccess&) = delete;
    RunningMsaccess& operator=(const RunningMsaccess&) = delete;

    /// Once there is one; 0 when it does not come.
    platform::WindowHandle Window() const {
        platform::WindowHandle window = 0;
        RunUntil([&] { return (window = process->FindWindowOfClass("OMain")) != 0; });
        return window;
    }

    /// Its exit code, once it has ended.
    std::uint32_t Ended() const {
        RunUntil([this] { return process->ExitCode() != platform::StartedProcess::kStillActive; });
        return process->ExitCode().value_or(0);
    }

    std::unique_ptr<platform::StartedProcess> process;
};

/// What it ends with when it is told to quit or is ended.
extern const std::uint32_t kExitCodeOfQuit, kExitCodeOfKill;

/// How many of the ways to end a program it ignores while it hangs.
extern const int kHangIgnores;

/// Gives it an order, in UTF-8, while it runs.
void OrderMsaccess(platform::WindowHandle window, const std::string& order);

}  // namespace rvl::test
