#pragma once

#include "tools/deployserver/job.h"

namespace rvl::deployserver {

/// Waits for the report that a workstation sends after its login.
class ReportJob : public Job {
 public:
    explicit ReportJob(const Workstation& workstation) : m_workstation(workstation) {}

    void Start() override {}
    bool Take(const Message&) override { return false; }
    Progress CurrentProgress() const override {
        return m_workstation.Report().HasArrived() ? Progress::Succeeded : Progress::Running;
    }

 private:
    const Workstation& m_workstation;
};

}  // namespace rvl::deployserver
