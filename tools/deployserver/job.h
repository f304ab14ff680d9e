#pragma once

#include <memory>
#include <vector>

#include "util/message.h"

namespace rvl::deployserver {

/// A workstation that has logged in, as a job sees it.
class Workstation {
 public:
    virtual ~Workstation() = default;

    /// Sends a whole message text; dropped when the link is gone.
    virtual void Send(TextView message) = 0;
    virtual void CloseLink() = 0;

    /// Print a line followed by the number of the connection.
    virtual void PrintStep(const Text& line) = 0;
    virtual void PrintOutcome(const Text& line) = 0;
};

/// One piece of work with one workstation. A session runs its jobs one after the other; a link that is lost
/// takes them along, and the next login begins them anew.
class Job {
 public:
    enum class Progress { Running, Succeeded, Failed };

    virtual ~Job() = default;
    virtual void Start() = 0;

    /// Takes a message of the workstation; false when it does not belong to this job.
    virtual bool Take(const Message& message) = 0;
    virtual Progress CurrentProgress() const = 0;
};

using JobList = std::vector<std::unique_ptr<Job>>;

}  // namespace rvl::deployserver
