#pragma once

#include "deploy/local_database.h"
#include "deploy/server_command_ports.h"

namespace rvl {

/// Tells the server what is installed, after a look at the disk: one record per template and deployment with
/// the number of its files that are there. On the way the database is put right: rows of files that are gone
/// are dropped, and a deployment that lost a shortcut is forgotten, so that the server deploys it again.
class FrontendReport {
 public:
    FrontendReport(LocalDatabase& database, ServerReplies& server) : m_database(database), m_server(server) {}

    void SendCurrentFrontends();  ///< errors are reported; the end marker is then not sent

 private:
    void Examine(Recordset& version);
    std::int64_t CountPresentFiles(Recordset& version);
    void SendRecord(Recordset& version, std::int64_t present);
    void Forget(Recordset& version);

    LocalDatabase& m_database;
    ServerReplies& m_server;
};

}  // namespace rvl
