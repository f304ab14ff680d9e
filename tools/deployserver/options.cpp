#include "tools/deployserver/options.h"

#include <algorithm>
#include <array>
#include <limits>

#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

// A piece, its frame and its message header have to fit the client's input buffer of 524288 characters.
// With header and a receipt of the piece behind it, it has to fit the client's input buffer of 524288.
constexpr std::int64_t kLargestPiece = 515000;

constexpr const char* kHelp =
    "Usage: deployserver [OPTION]...\n"
    "A small deployment server to try workstation clients with: it lets them find it, logs them in and\n"
    "pushes a file to each of them.\n"
    "\n"
    "  --port=N             listen on TCP and UDP port N of all interfaces (default: 16378, where clients\n"
    "                       look for their server)\n"
    "  --name=TEXT          the server's name in its LOCATE_REPLY (default: the name of this computer)\n"
    "  --no-locate          do not open the UDP port: leave LOCATE to other servers\n"
    "  --push=LOCALFILE     push this file to every workstation that logs in; needs --to\n"
    "  --to=PATH            where the workstation stores it, such as 'C:\\Data\\front end.mdb'\n"
    "  --piece=BYTES        bytes per FILE_DATA message, 1 to 515000 (default 262144): with its header it\n"
    "                       has to fit the client's input buffer of 524288 characters\n"
    "  --no-resume          have the client begin at 0 even when it holds a part of the file\n"
    "  --cut-after=BYTES    cut the link once, when this many bytes of the file were sent, all workstations\n"
    "                       together; a part that is not acknowledged yet may be lost\n"
    "  --cut-how=HOW        close: close the connection; the client comes back after its retry interval,\n"
    "                       30 seconds when it found the server by broadcast (default)\n"
    "                       findagain: send FIND_SERVER_AGAIN, upon which the client drops the link and\n"
    "                       locates the server anew, at once\n"
    "  --once               end when the first push of a file has come to its end\n"
    "  --quiet              print only that the server listens, what the pushes came to, and refusals\n"
    "  --help, --version    print this text, or the version, and end\n"
    "\n"
    "An option's value may also be the next argument. Every protocol step is one line on standard output,\n"
    "beginning with its name; #N is the number of the connection. NUL is shown as |, other control\n"
    "characters as \\xHH. What the connections log goes to deployserver.log beside the program.\n"
    "\n"
    "A workstation that lost its link gets the push again at its next login and resumes it.\n"
    "SIGTERM and SIGINT end the server.\n"
    "\n"
    "Exit status: 0 ended by a signal, or with --once the digest of the pushed file matched; 1 the push\n"
    "failed, or the server was ended before it was done (both with --once), or it cannot listen or read the\n"
    "file; 2 wrong usage.\n";

[[noreturn]] void Refuse(const Text& reason) {
    throw WrongUsage{reason};
}

std::int64_t ParseNumber(const Text& option, const Text& value, std::int64_t most) {
    const auto number = ParseInteger64(value);
    if (!number || *number < 1 || *number > most)
        Refuse(option + " takes a whole number from 1 to " + NumberText(most) + ", not '" + value + "'");
    return *number;
}

CutMethod ParseCutMethod(const Text& value) {
    if (value == "close") return CutMethod::Close;
    if (value == "findagain") return CutMethod::FindAgain;
    Refuse("--cut-how takes close or findagain, not '" + value + "'");
}

/// What the command line said, before it is checked as a whole.
struct Draft {
    Options options;
    PushOrder push;
    const char* pushDetail = nullptr;  ///< an option seen that means nothing without --push
};

struct Rule {
    const char* name;
    bool takesValue;
    bool pushDetail;
    void (*apply)(Draft& draft, const Text& value);
};

constexpr std::array<Rule, 13> kRules{{
    {"--help", false, false, [](Draft& draft, const Text&) { draft.options.help = true; }},
    {"--version", false, false, [](Draft& draft, const Text&) { draft.options.version = true; }},
    {"--port", true, false,
     [](Draft& draft, const Text& value) {
         constexpr std::int64_t kLast = std::numeric_limits<std::uint16_t>::max();
         draft.options.port = static_cast<std::uint16_t>(ParseNumber("--port", value, kLast));
     }},
    {"--name", true, false, [](Draft& draft, const Text& value) { draft.options.name = value; }},
    {"--no-locate", false, false, [](Draft& draft, const Text&) { draft.options.locate = false; }},
    {"--quiet", false, false, [](Draft& draft, const Text&) { draft.options.quiet = true; }},
    {"--push", true, false, [](Draft& draft, const Text& value) { draft.push.localFile = value; }},
    {"--to", true, true, [](Draft& draft, const Text& value) { draft.push.remotePath = value; }},
    {"--piece", true, true,
     [](Draft& draft, const Text& value) {
         draft.push.pieceSize = static_cast<std::size_t>(ParseNumber("--piece", value, kLargestPiece));
     }},
    {"--no-resume", false, true, [](Draft& draft, const Text&) { draft.push.resumeAllowed = false; }},
    {"--cut-after", true, true,
     [](Draft& draft, const Text& value) {
         constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
         draft.options.cut.afterBytes = ParseNumber("--cut-after", value, kMost);
     }},
    {"--cut-how", true, true,
     [](Draft& draft, const Text& value) { draft.options.cut.method = ParseCutMethod(value); }},
    {"--once", false, true, [](Draft& draft, const Text&) { draft.options.once = true; }},
}};

const Rule& RuleOf(const Text& name) {
    const auto* rule =
        std::find_if(kRules.begin(), kRules.end(), [&](const Rule& each) { return name == each.name; });
    if (rule == kRules.end()) Refuse("unknown argument '" + name + "'");
    return *rule;
}

using Arguments = std::vector<Text>;

/// Applies the option at `index` and returns the index of the next one.
std::size_t ApplyOption(Draft& draft, const Arguments& arguments, std::size_t index) {
    const Text& argument = arguments[index];
    const std::size_t equals = argument.find('=');
    const Rule& rule = RuleOf(argument.substr(0, equals));
    if (rule.pushDetail) draft.pushDetail = rule.name;
    Text value;
    if (equals != Text::npos) {
        if (!rule.takesValue) Refuse(Text(rule.name) + " takes no value");
        value = argument.substr(equals + 1);
    } else if (rule.takesValue) {
        if (++index == arguments.size()) Refuse(Text(rule.name) + " needs a value");
        value = arguments[index];
    }
    if (rule.takesValue && value.empty()) Refuse(Text(rule.name) + " needs a value that is not empty");
    rule.apply(draft, value);
    return index + 1;
}

void CheckPush(Draft& draft) {
    const PushOrder& push = draft.push;
    if (push.localFile.empty() && draft.pushDetail != nullptr)
        Refuse(Text(draft.pushDetail) + " needs --push");
    if (!push.localFile.empty() && push.remotePath.empty()) Refuse("--push needs --to");
    if (!push.localFile.empty()) draft.options.push = push;
}

}  // namespace

Options ParseOptions(const Arguments& arguments) {
    Draft draft;
    for (std::size_t index = 0; index < arguments.size();)
        index = ApplyOption(draft, arguments, index);
    if (!draft.options.help && !draft.options.version) CheckPush(draft);
    return draft.options;
}

Text HelpText() {
    return kHelp;
}

}  // namespace rvl::deployserver
