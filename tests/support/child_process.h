#pragma once

#include <cstdint>
#include <string>

namespace rvl::test {

/// This program again, at the same workstation: it runs one of the tests that are disabled in a process that
/// is not such a child. Killed when the object goes.
class ChildProcess {
 public:
    static constexpr int kKilled = -1;

    /// The test as "Suite.DISABLED_Name"; the argument is for it to read.
    explicit ChildProcess(const std::string& test, const std::string& argument = "");
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    std::uint32_t Id() const { return m_id; }
    bool HasEnded();
    int Wait();  ///< the exit code, 0 when its test has passed
    void Kill();

    static bool IsOne();
    static std::string Argument();

 private:
    std::uint32_t m_id = 0;
    std::intptr_t m_handle = 0;  ///< 0: its end has been seen
    int m_exitCode = 0;
};

/// The words behind the program's name that make it such a child.
std::string ChildArguments(const std::string& test);

/// Path of this program, as the system names it.
std::string ThisProgram();

/// What this process was started with, its words apart by single spaces.
std::string StartedAs();

/// Ends a process at once, as the system does with one that has failed.
void KillProcess(std::uint32_t process);

/// How many moments of a process's run can be tried out in reasonable time.
extern const int kAffordableProcesses;

}  // namespace rvl::test
