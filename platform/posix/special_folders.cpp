#include "platform/special_folders.h"

#include "platform/identity.h"

namespace rvl::platform {
namespace {

Text UserFolder(const char* below) {
    return "C:\\Users\\" + UserName() + "\\" + below;
}

}  // namespace

Text SpecialFolderPath(SpecialFolder folder) {
    switch (folder) {
        case SpecialFolder::StartMenuPrograms:
            return UserFolder("AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs\\");
        case SpecialFolder::CommonDesktop:
            return "C:\\Users\\Public\\Desktop\\";
        case SpecialFolder::Desktop:
            return UserFolder("Desktop\\");
        case SpecialFolder::RoamingAppData:
            return UserFolder("AppData\\Roaming\\");
        case SpecialFolder::LocalAppData:
            return UserFolder("AppData\\Local\\");
        case SpecialFolder::CommonAppData:
            return "C:\\ProgramData\\";
        case SpecialFolder::Windows:
            return "C:\\Windows\\";
        case SpecialFolder::System:
            return "C:\\Windows\\System32\\";
        case SpecialFolder::ProgramFiles:
            return "C:\\Program Files\\";
        case SpecialFolder::ProgramFilesX86:
            return "C:\\Program Files (x86)\\";
    }
    return "";
}

}  // namespace rvl::platform
