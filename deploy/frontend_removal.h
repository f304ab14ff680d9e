#pragma once

#include "deploy/deployment_audience.h"
#include "deploy/local_database.h"

namespace rvl {

/// Takes versions off the workstation: recorded files, main file, icon, shortcuts, the folders that become
/// empty, and the rows. An empty user name means the version's template. What cannot be deleted stays on the
/// disk unrecorded; other errors are reported.
class FrontendRemoval {
 public:
    FrontendRemoval(LocalDatabase& database, DeploymentAudience& audience)
        : m_database(database), m_audience(audience) {}

    /// Every version of a front end that the user has. Quiet: nothing is logged when there is none.
    void RemoveAllFrontendVersions(std::int32_t frontendId, const Text& username, bool quiet);
    void RemoveFrontendVersion(std::int32_t frontendVersionId, const Text& username, bool quiet);

 private:
    void Remove(Recordset& version, const Text& username);
    void RemoveShortcuts(Recordset& version, const Text& username);

    LocalDatabase& m_database;
    DeploymentAudience& m_audience;
};

}  // namespace rvl
