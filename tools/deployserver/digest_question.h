#pragma once

#include "tools/deployserver/job.h"

namespace rvl::deployserver {

/// Asks a workstation for the digest of one of its files.
void AskDigest(Workstation& workstation, const Text& path);

/// True for what answers AskDigest.
bool IsDigestAnswer(const Message& message);

/// Empty when the file is missing; raises an Error when the answer is none that a digest question can have.
Text DigestOf(const Message& answer);

/// Raises an Error that shows a message nobody can expect here.
[[noreturn]] void RaiseUnexpected(const Message& message);

}  // namespace rvl::deployserver
