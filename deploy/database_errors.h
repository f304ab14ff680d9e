#pragma once

#include <cstdint>

#include "platform/error.h"
#include "platform/sqlite.h"

namespace rvl {

// Numbers of the errors that the database raises; their source is "Database".
inline constexpr std::int32_t kErrorUpdateWithoutEdit = 3020;
inline constexpr std::int32_t kErrorNoCurrentRecord = 3021;
inline constexpr std::int32_t kErrorDuplicateValue = 3022;
inline constexpr std::int32_t kErrorDiskFull = 3026;
inline constexpr std::int32_t kErrorReadOnly = 3027;
inline constexpr std::int32_t kErrorInputOutput = 3043;
inline constexpr std::int32_t kErrorCannotLock = 3050;
inline constexpr std::int32_t kErrorCannotOpen = 3051;
inline constexpr std::int32_t kErrorSelectExecuted = 3065;
inline constexpr std::int32_t kErrorStatement = 3075;
inline constexpr std::int32_t kErrorRecordDeleted = 3167;
inline constexpr std::int32_t kErrorInvalidOperation = 3219;
inline constexpr std::int32_t kErrorNotSupported = 3251;
inline constexpr std::int32_t kErrorItemNotFound = 3265;
inline constexpr std::int32_t kErrorUnrecognizedFormat = 3343;
inline constexpr std::int32_t kErrorObjectInvalid = 3420;
inline constexpr std::int32_t kErrorDataConversion = 3421;

// The system's own, raised by whoever opens the workstation's database.
inline constexpr std::int32_t kErrorUnknownDatabaseVersion = kApplicationErrorBase + 10205;
inline constexpr std::int32_t kErrorTemplateMissing = kApplicationErrorBase + 10207;

/// Raises one of the database's errors with its text.
[[noreturn]] void RaiseDatabaseError(std::int32_t number);

/// Raises what a failure of SQLite means in these numbers.
[[noreturn]] void RaiseDatabaseError(const platform::SqliteError& error);

}  // namespace rvl
