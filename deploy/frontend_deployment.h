#pragma once

#include <set>

#include "deploy/deployment_audience.h"
#include "deploy/frontend_removal.h"
#include "deploy/local_database.h"
#include "deploy/server_command_ports.h"
#include "deploy/user_folders.h"

namespace rvl {

/// Turns the template of a version into a deployment for one user. The row is there from early on, then the
/// files and shortcuts appear: whatever ends a deployment half-way, the next report shows what is missing,
/// and deploying again completes it.
class FrontendDeployment {
 public:
    FrontendDeployment(LocalDatabase& database, ServerReplies& server, FrontendRemoval& removal,
                       DeploymentAudience& audience)
        : m_database(database), m_server(server), m_removal(removal), m_audience(audience) {}

    /// Earlier versions of the front end that the user has are removed first. Without the files the version
    /// is only made available. Problems with files are sent to the server, other errors are reported.
    void FrontendVersionDeploy(std::int32_t frontendVersionId, const Text& username, bool copyFiles);

 private:
    /// One deployment on its way.
    struct Plan {
        Recordset& version;  ///< the template row
        Text username;
        Text sourceFolder = {};  ///< the staging folder; this and the next have a trailing backslash
        Text versionFolder = {};
        Text desktopShortcut = {};  ///< full paths; empty for none
        Text menuShortcut = {};
        std::int64_t deployedFrontendId = 0;
        std::set<Text> preparedFolders = {};  ///< that the user has got the rights of already

        Text Field(TextView name) const { return NullTo(version.Field(name), ""); }
        Text IconPath() const;  ///< empty when the version has none
    };

    void Refuse(const Text& problem);
    Plan MakePlan(Recordset& version, const Text& username);
    std::int64_t RecordDeployment(const Plan& plan);
    void CopyIcon(const Plan& plan);
    void CopyFiles(Plan& plan);
    void CopyFile(Plan& plan, Recordset& target, const Text& filename);
    bool CopyOrComplain(const Text& source, const Text& destination);
    void CreateShortcuts(const Plan& plan);

    LocalDatabase& m_database;
    ServerReplies& m_server;
    FrontendRemoval& m_removal;
    DeploymentAudience& m_audience;
};

}  // namespace rvl
