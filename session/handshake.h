#pragma once

#include "util/message.h"

namespace rvl {

/// What the first message of a local connection came to.
struct Handshake {
    enum class RemoteType { None, UI, Helper };

    RemoteType remoteType = RemoteType::None;
    Text rejection;  ///< why the connection is to be closed, when there is no type
};

Handshake ReadHandshake(const Message& message);

}  // namespace rvl
