#pragma once

#include <cstdint>

#include "platform/text.h"

namespace rvl {

/// The log is trimmed to its last kLogKeepBytes once it has reached kLogTrimThreshold.
inline constexpr std::int64_t kLogKeepBytes = 1048576;
inline constexpr std::int64_t kLogTrimThreshold = 1572864;

/// Appends one entry to the log file beside the executable. The file is opened and closed for every entry, so
/// that several processes write in turn; an entry that cannot be written is lost. Never raises.
void Log(TextView text, bool suppressTag = false) noexcept;

/// The executable's folder and name with ".log".
Text LogPath();

/// The log of another executable.
Text LogPathOf(const Text& executable);

/// True when the log had reached the threshold, trimmed or not; the kept text starts at a whole line.
bool TrimLogFile(std::int64_t keepBytes = kLogKeepBytes, std::int64_t thresholdBytes = kLogTrimThreshold);

/// Logs a protocol message, abbreviated and printable; file contents are never logged.
void MaybeLogProtocolData(TextView data, bool outgoing, TextView peer = "");

}  // namespace rvl
