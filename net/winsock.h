#pragma once

namespace rvl {

/// Starts the socket library; calls nest. Raises "Error starting Winsock" when it does not start.
void StartWinsock();

/// Undoes one StartWinsock; one too many raises "EndWinsock without StartWinsock".
void EndWinsock();

}  // namespace rvl
