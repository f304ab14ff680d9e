#include <gtest/gtest.h>

#include "platform/identity.h"
#include "runtime/folder_paths.h"
#include "runtime/system_information.h"

namespace rvl {

/// The prefix in which the tests run is that of ann on the computer OFFICE.
TEST(Identity, TheUserIsWhoHasLoggedOn) {
    EXPECT_EQ(platform::UserName() + "@" + platform::ComputerName(), "ann@OFFICE");
    EXPECT_EQ(FullUsername() + "|" + UserLocalSettingsAppDataPath() + "|" + DesktopPath(),
              "OFFICE\\ann|C:\\users\\ann\\AppData\\Local\\|C:\\users\\ann\\Desktop\\");
}

}  // namespace rvl
