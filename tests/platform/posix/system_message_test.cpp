#include "platform/system_message.h"

#include <gtest/gtest.h>

namespace rvl::platform {
namespace {

TEST(SystemMessage, AsWindowsSaysIt) {
    const std::pair<int, Text> rows[] = {
        {2, "The system cannot find the file specified."},
        {5, "Access is denied."},
        {112, "There is not enough space on the disk."},
        {193, "%1 is not a valid Win32 application."},
        {1072, "The specified service has been marked for deletion."},
        {1307, "This security ID may not be assigned as the owner of this object."},
        {1332, "No mapping between account names and security IDs was done."}};
    for (const auto& [code, message] : rows)
        EXPECT_TRUE(SystemMessage(code).starts_with(message)) << SystemMessage(code);
}

}  // namespace
}  // namespace rvl::platform
