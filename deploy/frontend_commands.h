#pragma once

#include "deploy/frontend_deployment.h"
#include "deploy/frontend_registration.h"
#include "deploy/frontend_removal.h"
#include "deploy/server_request.h"

namespace rvl {

/// The server's commands that register, deploy and remove front-end versions. None of them is answered when
/// it succeeds: the server learns the result from the next report.
class FrontendCommands {
 public:
    FrontendCommands(FrontendRegistration& registration, FrontendDeployment& deployment,
                     FrontendRemoval& removal)
        : m_registration(registration), m_deployment(deployment), m_removal(removal) {}

    void Add(const ServerRequest& request);            ///< FRONTEND_ADD
    void AddFile(const ServerRequest& request);        ///< FRONTEND_FILE_ADD
    void Deploy(const ServerRequest& request);         ///< FRONTEND_DEPLOY
    void MakeAvailable(const ServerRequest& request);  ///< FRONTEND_MAKE_AVAILABLE
    void Remove(const ServerRequest& request);         ///< FRONTEND_REMOVE

 private:
    FrontendRegistration& m_registration;
    FrontendDeployment& m_deployment;
    FrontendRemoval& m_removal;
};

}  // namespace rvl
