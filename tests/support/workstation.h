#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "platform/text.h"

namespace rvl::test {

// The workstation of this test process: on Linux a temporary root of its own, on Windows the machine itself,
// which must be a Wine prefix made for the tests. A host path that is a plain text is in ASCII.

/// Host path of drive C:, without trailing slash.
std::string DriveC();

/// Removes what the system itself has not put there.
void EmptyDriveC();

/// Host path of a path of the system.
std::filesystem::path HostFile(const Text& path);

/// Win32 code of whatever is looked for on drive Q:, which there is not.
int CodeOfNoDrive();

std::string ReadHostFile(const std::filesystem::path& path);
void WriteHostFile(const std::filesystem::path& path, std::string_view content);

/// An environment variable of this process and of those that it starts from now on; the value is UTF-8.
void SetEnvironment(const char* name, const std::string& value);
void UnsetEnvironment(const char* name);

/// Two programs of the system that end at once, whatever they are told.
extern const Text kProgramThatEnds, kOtherProgramThatEnds;

/// No web page can be opened for as long as it lives.
class WithoutBrowser {
 public:
    WithoutBrowser();
    ~WithoutBrowser();
    WithoutBrowser(const WithoutBrowser&) = delete;
    WithoutBrowser& operator=(const WithoutBrowser&) = delete;

 private:
    std::string m_kept;
};

/// What has been logged since the last call of ClearLog (the log lies beside the test program).
std::string LogContent();
bool Logged(const Text& entry);  ///< the whole text of one entry
void ClearLog();

/// The error that an action raises, as "number source: description"; empty when it raises none.
Text ErrorOf(const std::function<void()>& act);

/// Lets events run until the condition holds; false when it does not within the deadline (real time).
bool RunUntil(const std::function<bool()>& condition, int milliseconds = 5000);

}  // namespace rvl::test
