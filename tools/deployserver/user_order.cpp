#include "tools/deployserver/user_order.h"

#include "tools/deployserver/workstation_report.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

bool IsComplete(const ReportRecord& record, const OrderedVersion& version) {
    const bool sameFiles = version.fileCount == 0 || record.fileCount == version.fileCount;
    return sameFiles && record.fileCount > 0 && record.present == record.fileCount;
}

Text VersionOf(const UserOrder& order, const OrderedVersion& version) {
    const Text id = "version " + NumberText(version.id);
    return id + (order.user.empty() ? " template" : " for " + order.user);
}

}  // namespace

Text CommandOf(const UserOrder& order) {
    if (order.kind == OrderKind::Deploy) return "FRONTEND_DEPLOY";
    return order.kind == OrderKind::MakeAvailable ? "FRONTEND_MAKE_AVAILABLE" : "FRONTEND_REMOVE";
}

Text Describe(const UserOrder& order, const OrderedVersion& version) {
    return CommandOf(order) + " " + VersionOf(order, version);
}

bool IsFulfilled(const UserOrder& order, const OrderedVersion& version, const WorkstationReport& report) {
    const ReportRecord* record = report.Find(version.id, order.user);
    if (order.kind == OrderKind::Remove) return record == nullptr;
    return record != nullptr && (order.kind == OrderKind::MakeAvailable || IsComplete(*record, version));
}

Text Judgement(const UserOrder& order, const OrderedVersion& version, const WorkstationReport& report) {
    const Text what = VersionOf(order, version);
    if (IsFulfilled(order, version, report)) {
        if (order.kind == OrderKind::Deploy) return "DEPLOYED " + what + " complete";
        return (order.kind == OrderKind::MakeAvailable ? "AVAILABLE " : "REMOVED ") + what;
    }
    if (order.kind == OrderKind::Remove) return "INCOMPLETE " + what + " is still reported";
    const ReportRecord* record = report.Find(version.id, order.user);
    if (record == nullptr) return "INCOMPLETE " + what + " is not reported";
    return "INCOMPLETE " + what + " " + FilesText(*record);
}

}  // namespace rvl::deployserver
