#include "deploy/version_folder.h"

#include "runtime/folder_paths.h"
#include "runtime/folders.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

enum DestinationLocation { kUserProfile = 1, kProgramFiles = 2, kCustom = 3 };

constexpr const char* kFrontends = "Ravelin\\Client\\Frontends";

/// A folder can be somebody's without files yet: of a version that is only made available.
bool IsOccupied(LocalDatabase& database, const Text& folder) {
    return DoesDirectoryContainFilesOrFolders(folder, Subfolders::SearchForFiles) ||
           !database
                .OpenRecordset("SELECT FrontendID FROM DeployedFrontends WHERE FrontendLocation = " +
                               QuoteSQLString(folder))
                ->IsEOF();
}

}  // namespace

Text BaseFolder(Recordset& versionTemplate, const std::optional<UserFolders>& user) {
    const auto location = NullTo(versionTemplate.Field("DestinationLocation"), 0);
    if (location == kUserProfile && user && !user->localAppData.empty())
        return user->localAppData + kFrontends;
    if (location == kUserProfile || location == kProgramFiles)
        return WithTrailingBackslash(ProgramFilesPath()) + kFrontends;
    if (location == kCustom) return NullTo(versionTemplate.Field("CustomDestinationLocation"), "");
    return "";
}

Text ChooseVersionFolder(LocalDatabase& database, const Text& base, const Text& frontendId,
                         const Text& frontendVersionId) {
    // Without a base the root of drive C:, never whatever folder the service happens to run in.
    const Text root = base.empty() ? Text("\\") : WithTrailingBackslash(base);
    const Text folder = root + frontendId + "\\" + frontendVersionId + "\\";
    Text candidate = folder;
    for (int number = 1; IsOccupied(database, candidate); ++number)
        candidate = folder + "_" + NumberText(number) + "\\";
    return candidate;
}

}  // namespace rvl
