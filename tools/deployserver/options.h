#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/text.h"
#include "tools/deployserver/frontend_options.h"
#include "tools/deployserver/people_options.h"
#include "tools/deployserver/update_options.h"

namespace rvl::deployserver {

/// The file to push to every workstation that logs in.
struct PushOrder {
    Text localFile;
    Text remotePath;
};

/// How files are pushed.
struct TransferOptions {
    std::size_t pieceSize = 262144;
    bool resumeAllowed = true;
};

/// How a link is cut in the middle of a transfer.
enum class CutMethod {
    Close,      ///< the connection is closed: the client tries again after its retry interval
    FindAgain,  ///< the client is told to drop the link and to locate its server again, at once
};

struct CutOrder {
    std::optional<std::int64_t> afterBytes;  ///< none: no cut
    CutMethod method = CutMethod::Close;
};

struct Options {
    bool help = false;
    bool version = false;
    std::uint16_t port = 16378;
    Text name;       ///< empty: the computer's name
    PushOrder push;  ///< without a local file nothing is pushed
    TransferOptions transfer;
    CutOrder cut;
    FrontendOptions frontend;
    UpdateOptions update;
    PeopleOptions people;
    bool once = false;
    bool locate = true;
    bool quiet = false;

    bool IsPushing() const { return !push.localFile.empty(); }
    bool TransfersFiles() const { return IsPushing() || frontend.IsPublishing() || update.IsUpdating(); }
};

/// A command line that makes no sense, with the reason.
struct WrongUsage {
    Text reason;
};

/// Reads the arguments after the program name; raises WrongUsage.
Options ParseOptions(const std::vector<Text>& arguments);

Text HelpText();

}  // namespace rvl::deployserver
