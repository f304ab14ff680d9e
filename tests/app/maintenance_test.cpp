#include "app/maintenance.h"

#include <gtest/gtest.h>

#include "runtime/log_file.h"
#include "tests/support/virtual_clock.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

TEST(Maintenance, LooksAtTheLogEveryHalfHour) {
    constexpr std::uint64_t kMinute = 60000, kHalfHour = 30 * kMinute;
    test::VirtualClock clock;
    const Maintenance maintenance;
    for (const auto& [wait, bytes] :
         {std::pair(kMinute, 1572864), {kHalfHour, 1572863}, {kHalfHour, 1572864}}) {
        test::WriteHostFile(test::HostFile(LogPath()), std::string(bytes, '\n'));
        clock.Advance(wait - 1);
        EXPECT_FALSE(test::Logged("Log file trimmed")) << bytes;
        clock.Advance(1);
        EXPECT_EQ(test::Logged("Log file trimmed"), bytes == 1572864);
    }
    test::ClearLog();
}

}  // namespace
}  // namespace rvl
