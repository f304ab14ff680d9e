#include "deploy/explain_database_error.h"

#include "deploy/database_errors.h"
#include "runtime/process_state.h"
#include "runtime/system_information.h"

namespace rvl {
namespace {

constexpr std::int32_t kErrorCannotCreateObject = 429;
constexpr std::int32_t kErrorComponentMissing = 3633;

constexpr const char* kComponentsAddress = "https://support.example.com/mdac";

Text AskForPermission(const Text& permission) {
    return "Please ensure that the \"" + FullUsername() + "\" user account has permission to " + permission +
           ".";
}

}  // namespace

Text ExplainDatabaseError(std::int32_t number, TextView source) {
    const Text title = State().ApplicationTitle;
    switch (number) {
        case kErrorCannotLock:
            return AskForPermission("create, modify and delete files in the folder containing the database");
        case kErrorCannotOpen:
            return AskForPermission("modify the database file");
        case kErrorTemplateMissing:
            return AskForPermission("read and modify the database file");
        case kErrorCannotCreateObject:
            return source == "Globals.InitializeDatabase" ? title + " requires Microsoft DAO 3.6 (dao360.dll)"
                                                          : "";
        case kErrorComponentMissing:
            return title + " requires Microsoft Data Access Components (MDAC).\r\n\r\n" +
                   "MDAC 2.6 can be downloaded from " + kComponentsAddress;
        default:
            return "";
    }
}

}  // namespace rvl
