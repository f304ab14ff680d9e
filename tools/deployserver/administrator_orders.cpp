#include "tools/deployserver/administrator_orders.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/error.h"
#include "tools/deployserver/line_breaks.h"
#include "tools/deployserver/option_rule.h"
#include "tools/deployserver/order_words.h"
#include "util/parameters.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

constexpr const char* kInformationIcon = "64";
constexpr std::int64_t kMostNumber = std::numeric_limits<std::int32_t>::max();

std::int32_t FrontendId(const Text& word, std::int64_t least = 1) {
    return static_cast<std::int32_t>(ParseNumber("FRONTEND", word, kMostNumber, least));
}

Text Named(std::int32_t frontendId) {
    return "frontend " + NumberText(frontendId);
}

SessionKind KindNamed(const Text& word) {
    if (word == "helper") return SessionKind::Helper;
    if (word == "switchboard") return SessionKind::Switchboard;
    RefuseUsage("a message goes to helper or switchboard, not to '" + word + "'");
}

/// The context that has the service hand a message on to one of its local sessions.
Text AddressOf(std::int32_t clientId) {
    return NumberText(clientId) + "#";
}

}  // namespace

AdministratorOrders::AdministratorOrders(Host& host, const Console& console, StartDecisions& starts,
                                         VersionHistory& history, Text historyFile)
    : m_host(host),
      m_console(console),
      m_starts(starts),
      m_history(history),
      m_historyFile(std::move(historyFile)) {}

void AdministratorOrders::CarryOut(const std::string& utf8) try {
    const Words words = OrderWords(utf8);
    if (!words.empty()) Obey(words);
} catch (const WrongUsage& wrong) {
    m_console.Outcome("NOT UNDERSTOOD: " + wrong.reason);
} catch (const Error& error) {
    NotDone(error.Description());
}

void AdministratorOrders::Obey(const Words& words) {
    struct Rule {
        const char* name;
        const char* form;
        std::size_t fewest, most;  // words, the name included
        void (AdministratorOrders::*carryOut)(const Words&);
    };
    static constexpr Rule kRules[] = {
        {"close", "close USER FRONTEND SECONDS [no-continue] TEXT", 5, 6, &AdministratorOrders::Close},
        {"message", "message helper|switchboard USER TEXT [TITLE [STYLE]]", 4, 6,
         &AdministratorOrders::ShowMessage},
        {"start", "start USER FRONTEND", 3, 3, &AdministratorOrders::Start},
        {"updated", "updated FRONTEND", 2, 2, &AdministratorOrders::Updated},
        {"deny", "deny FRONTEND [TEXT]", 2, 3, &AdministratorOrders::Deny},
        {"allow", "allow FRONTEND", 2, 2, &AdministratorOrders::Allow},
        {"stop", "stop", 1, 1, &AdministratorOrders::Stop},
    };
    for (const Rule& rule : kRules) {
        if (words[0] != rule.name) continue;
        if (words.size() < rule.fewest || words.size() > rule.most)
            RefuseUsage(Text("the order is: ") + rule.form +
                        ", with a text of several words in double quotes");
        return (this->*rule.carryOut)(words);
    }
    RefuseUsage("unknown order '" + words[0] + "'");
}

// Orders

void AdministratorOrders::Close(const Words& words) {
    constexpr std::int64_t kDay = 86400;
    constexpr std::size_t kWithFlag = 6;
    const Text& user = words[1];
    const std::int32_t id = FrontendId(words[2], 0);
    const Text seconds = NumberText(ParseNumber("SECONDS", words[3], kDay, 0));
    const bool noContinue = words.size() == kWithFlag;
    if (noContinue && words[4] != "no-continue")
        RefuseUsage("'" + words[4] + "' is not no-continue; a text of several words needs double quotes");
    Letters letters;
    for (const auto& workstation : m_host.LoggedIn())
        for (const RunningFrontend& each : workstation->People().RunningOf(user, id))
            letters.push_back(
                {workstation,
                 MakeMessage("", "CLOSE_FRONTEND",
                             JoinParameters({NumberText(each.helperId), NumberText(id), each.window,
                                             FileNameOf(each.path), seconds, noContinue ? "1" : "0",
                                             WithLineBreaks(words.back())})),
                 "CLOSE_FRONTEND " + Named(id) + " of " + workstation->People().UserOf(each.helperId) +
                     ": window " + each.window + ", in " + seconds + " s" +
                     (noContinue ? ", no continuing" : "")});
    Send(letters, OrUnknown(user, Named(id) + " is not running for " + user));
}

void AdministratorOrders::ShowMessage(const Words& words) {
    constexpr std::size_t kTitle = 4, kStyle = 5;
    const SessionKind kind = KindNamed(words[1]);
    const Text& user = words[2];
    const Text title = words.size() > kTitle ? words[kTitle] : Text();
    const Text style = words.size() > kStyle ? NumberText(ParseNumber("STYLE", words[kStyle], kMostNumber, 0))
                                             : kInformationIcon;
    const Text params = JoinParameters({WithLineBreaks(words[3]), title, style});
    Letters letters;
    for (const auto& workstation : m_host.LoggedIn())
        for (const std::int32_t id : workstation->People().SessionsOf(user, kind))
            letters.push_back(
                {workstation, MakeMessage(AddressOf(id), "MSGBOX", params),
                 "MSGBOX to " + words[1] + " " + NumberText(id) + " of " + workstation->People().UserOf(id)});
    Send(letters, OrUnknown(user, user + " has no " + words[1]));
}

/// Without a switchboard to tell: should it fail, nobody hears of it.
void AdministratorOrders::Start(const Words& words) {
    const Text& user = words[1];
    const std::int32_t id = FrontendId(words[2]);
    Letters letters;
    for (const auto& workstation : m_host.LoggedIn())
        for (const std::int32_t helper : workstation->People().SessionsOf(user, SessionKind::Helper))
            letters.push_back({workstation,
                               MakeMessage("", "START_FRONTEND",
                                           JoinParameters({NumberText(helper), NumberText(id), "", "-1"})),
                               "START_FRONTEND " + Named(id) + " for " +
                                   workstation->People().UserOf(helper) + ": ordered"});
    Send(letters, OrUnknown(user, user + " has no helper"));
}

void AdministratorOrders::Updated(const Words& words) {
    const std::int32_t id = FrontendId(words[1]);
    if (!m_historyFile.empty()) m_history.Read(m_historyFile);
    if (!IsFrontendKnown(id)) return NotDone(Named(id) + " is not known");
    Letters letters;
    for (const auto& workstation : m_host.LoggedIn())
        letters.push_back({workstation, MakeMessage("", "FRONTEND_UPDATED", NumberText(id)),
                           "FRONTEND_UPDATED " + Named(id)});
    Send(letters, "no workstation is logged in");
}

void AdministratorOrders::Deny(const Words& words) {
    const std::int32_t id = FrontendId(words[1]);
    m_starts.Deny(id, words.size() > 2 ? WithLineBreaks(words[2]) : Text());
    m_console.Outcome("DENY " + Named(id) + (IsFrontendKnown(id) ? "" : ", which is not known yet"));
}

void AdministratorOrders::Allow(const Words& words) {
    const std::int32_t id = FrontendId(words[1]);
    if (!m_starts.Allow(id)) return NotDone(Named(id) + " was not denied");
    m_console.Outcome("ALLOW " + Named(id));
}

void AdministratorOrders::Stop(const Words&) {
    m_host.StopServing();
}

// Whom they reach

void AdministratorOrders::Send(const Letters& letters, const Text& reasonForNone) const {
    if (letters.empty()) NotDone(reasonForNone);
    for (const Letter& letter : letters) {
        letter.workstation->PrintOutcome(letter.line);
        letter.workstation->Send(letter.message);
    }
}

bool AdministratorOrders::IsUserKnown(const Text& user) const {
    const auto all = m_host.LoggedIn();
    return std::any_of(all.begin(), all.end(),
                       [&](const auto& workstation) { return workstation->People().Knows(user); });
}

/// Published, in the history or on a workstation.
bool AdministratorOrders::IsFrontendKnown(std::int32_t frontendId) const {
    const auto isReported = [&](const auto& workstation) {
        const auto& records = workstation->Report().Records();
        return std::any_of(records.begin(), records.end(),
                           [&](const ReportRecord& record) { return record.frontendId == frontendId; });
    };
    const auto all = m_host.LoggedIn();
    return m_history.Knows(frontendId) || std::any_of(all.begin(), all.end(), isReported);
}

Text AdministratorOrders::OrUnknown(const Text& user, const Text& reason) const {
    if (IsUserKnown(user)) return reason;
    return user == "*" ? Text("nobody is logged in") : user + " is not logged in at any workstation";
}

}  // namespace rvl::deployserver
