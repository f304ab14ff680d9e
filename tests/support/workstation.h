#pragma once

#include <functional>
#include <string>

#include "platform/text.h"

namespace rvl::test {

/// The temporary workstation root of this test process (RVL_ROOT), set before the first test runs and removed
/// after the last. Host path, without trailing slash.
const std::string& Root();

/// Host path of "C:\" in it.
std::string DriveC();
void EmptyDriveC();

std::string ReadHostFile(const std::string& path);
void WriteHostFile(const std::string& path, std::string_view content);

/// What has been logged since the last call of ClearLog (the log lies beside the test program).
std::string LogContent();
bool Logged(const Text& entry);  ///< the whole text of one entry
void ClearLog();

/// The error that an action raises, as "number source: description"; empty when it raises none.
Text ErrorOf(const std::function<void()>& act);

/// Lets events run until the condition holds; false when it does not within the deadline (real time).
bool RunUntil(const std::function<bool()>& condition, int milliseconds = 5000);

}  // namespace rvl::test
