#include "app/maintenance.h"

#include "runtime/log_file.h"
#include "util/handle_error.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

constexpr std::uint32_t kTick = 60000;
constexpr std::uint64_t kSpacing = 1800000;

}  // namespace

Maintenance::Maintenance() : m_tmrMaintenance([this] { tmrMaintenance_Timer(); }) {
    m_tmrMaintenance.SetInterval(kTick);
    m_tmrMaintenance.SetEnabled(true);
}

void Maintenance::tmrMaintenance_Timer() try {
    const std::uint64_t now = GetTickCountEx();
    if (m_lastMaintenance != 0 && now < m_lastMaintenance + kSpacing) return;
    m_lastMaintenance = now;
    DoMaintenance();
} catch (...) {
    HandleError("frmClientService.tmrMaintenance_Timer");
}

void Maintenance::DoMaintenance() {
    TrimLogFile(kLogKeepBytes, kLogTrimThreshold);
}

}  // namespace rvl
