#include "tests/support/running_msaccess.h"

namespace rvl::test {

const std::uint32_t kExitCodeOfQuit = 0, kExitCodeOfKill = 0xFFFFFFFF;
const int kHangIgnores = 2;  // a quit is for the program to read

void OrderMsaccess(platform::WindowHandle window, const std::string& order) {
    int error = 0;
    const auto process = platform::StartedProcess::Start(
        "\"" RVL_MSACCESS "\" /order " + std::to_string(window) + " \"" + TextFromUtf8(order) + "\"", error);
    if (!process) throw std::runtime_error("msaccess takes no orders");
    RunUntil([&] { return process->ExitCode() != platform::StartedProcess::kStillActive; });
}

}  // namespace rvl::test
