#include <gtest/gtest.h>

#include "runtime/folder_paths.h"
#include "runtime/system_information.h"
#include "tests/support/workstation.h"

namespace rvl {

TEST(Identity, TheUserIsWhoTheEnvironmentSays) {
    test::SetEnvironment("RVL_USER", "j\xC3\xA9r\xC3\xB4me");
    EXPECT_EQ(FullUsername() + UserLocalSettingsAppDataPath(),
              "WORKGROUP\\j\xE9r\xF4meC:\\Users\\j\xE9r\xF4me\\AppData\\Local\\");
    test::UnsetEnvironment("RVL_USER");
}

}  // namespace rvl
