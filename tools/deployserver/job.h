#pragma once

#include <memory>
#include <vector>

#include "tools/deployserver/local_people.h"
#include "tools/deployserver/login.h"
#include "tools/deployserver/workstation_report.h"
#include "util/message.h"

namespace rvl::deployserver {

/// A workstation that has logged in, as a job sees it.
class Workstation {
 public:
    virtual ~Workstation() = default;

    /// Sends a whole message text; dropped when the link is gone. Lets events run, but no job of this
    /// workstation takes a message before the one that sends has returned.
    virtual void Send(TextView message) = 0;
    virtual void CloseLink() = 0;

    virtual const Text& Version() const = 0;  ///< of its program, as its HELLO said
    virtual const Login& LoginData() const = 0;
    virtual const WorkstationReport& Report() const = 0;
    virtual const LocalPeople& People() const = 0;

    /// Print a line followed by the number of the connection.
    virtual void PrintStep(const Text& line) = 0;
    virtual void PrintOutcome(const Text& line) = 0;
};

/// One piece of work with one workstation. A session runs its jobs one after the other; a link that is lost
/// takes them along, and the next login begins them anew.
class Job {
 public:
    enum class Progress {
        Running,
        Succeeded,
        Failed,       ///< the jobs after this one are not begun
        NothingLeft,  ///< what the jobs after this one are for, up to an independent one, has been reached
    };

    virtual ~Job() = default;
    virtual void Start() = 0;

    /// Takes a message of the workstation; false when it does not belong to this job.
    virtual bool Take(const Message& message) = 0;
    virtual Progress CurrentProgress() const = 0;

    /// True when it is done also where a job before it left nothing to do.
    virtual bool IsIndependent() const { return false; }
};

using JobList = std::vector<std::unique_ptr<Job>>;

}  // namespace rvl::deployserver
