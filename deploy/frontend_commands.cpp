#include "deploy/frontend_commands.h"

#include "util/text_functions.h"

namespace rvl {
namespace {

std::int32_t Number(const ServerRequest& request, std::size_t parameter) {
    return ParseLongOr(request.Parameters()[parameter], 0);
}

/// A parameter that may be left out at the end.
Text Optional(const ServerRequest& request, std::size_t parameter) {
    const auto& params = request.Parameters();
    return parameter < params.size() ? params[parameter] : Text();
}

}  // namespace

void FrontendCommands::Add(const ServerRequest& request) {
    const auto& params = request.Parameters();
    m_registration.AddFrontendVersion(
        {Number(request, 0), Number(request, 1), params[2], params[3], params[4],
         StringToLongVector(params[5], ","), params[6], params[7], params[8], params[9], params[10],
         StringToDestinationLocation(params[11]), params[12], Number(request, 13)});
}

void FrontendCommands::AddFile(const ServerRequest& request) {
    m_registration.AddFrontendVersionFile(Number(request, 1), request.Parameters()[2]);
}

void FrontendCommands::Deploy(const ServerRequest& request) {
    m_deployment.FrontendVersionDeploy(Number(request, 0), request.Parameters()[1], true);
}

void FrontendCommands::MakeAvailable(const ServerRequest& request) {
    m_deployment.FrontendVersionDeploy(Number(request, 0), request.Parameters()[1], false);
}

void FrontendCommands::Remove(const ServerRequest& request) {
    const std::int32_t versionId = ParseLongOr(request.Parameters()[0], -1);
    if (versionId < 1) return request.RefuseAsInvalid();
    m_removal.RemoveFrontendVersion(versionId, Optional(request, 1), false);
}

}  // namespace rvl
