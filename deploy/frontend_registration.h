#pragma once

#include "deploy/frontend_version.h"
#include "deploy/local_database.h"
#include "deploy/server_command_ports.h"

namespace rvl {

/// Makes front-end versions known to this workstation: a template row for the version, and a row with size
/// and digest for each of its files that has been received. Success is not answered; problems are, with an
/// empty context. Other errors are reported.
class FrontendRegistration {
 public:
    FrontendRegistration(LocalDatabase& database, ServerReplies& server)
        : m_database(database), m_server(server) {}

    /// A version that is announced again begins anew.
    void AddFrontendVersion(const FrontendVersion& version);

    /// `filename` is relative to the version's staging folder, and the file is there already.
    void AddFrontendVersionFile(std::int32_t frontendVersionId, const Text& filename);

 private:
    void StoreTemplate(const FrontendVersion& version);
    void StoreFile(std::int64_t deployedFrontendId, const Text& filename, const Text& path);
    bool IsAcceptable(const Text& filename);
    void Refuse(const Text& problem);

    LocalDatabase& m_database;
    ServerReplies& m_server;
};

}  // namespace rvl
