#include "deploy/user_file_permissions.h"

#include "deploy/ntfs_permissions.h"
#include "runtime/system_information.h"

namespace rvl {

void SetUserFilePerms(const Text& username, const Text& path) {
    const Text administrators = AdministratorsGroupName();
    ReplacePermissions(path, {FullUsername(), administrators, LocalSystemUsername(), username}, kFullAccess);
    SetOwner(path, administrators);
}

}  // namespace rvl
