#include <array>
#include <limits>

#include "tools/deployserver/option_rule.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

using enum OptionValue;

// With header and a receipt of the piece behind it, it has to fit the client's input buffer of 524288.
constexpr std::int64_t kLargestPiece = 515000;

CutMethod ParseCutMethod(const Text& value) {
    if (value == "close") return CutMethod::Close;
    if (value == "findagain") return CutMethod::FindAgain;
    RefuseUsage("--cut-how takes close or findagain, not '" + value + "'");
}

constexpr std::array kRules{
    OptionRule{"--help", None, Needs::Nothing, [](Options& options, const Text&) { options.help = true; }},
    OptionRule{"--version", None, Needs::Nothing,
               [](Options& options, const Text&) { options.version = true; }},
    OptionRule{"--port", Needed, Needs::Nothing,
               [](Options& options, const Text& value) {
                   constexpr std::int64_t kLast = std::numeric_limits<std::uint16_t>::max();
                   options.port = static_cast<std::uint16_t>(ParseNumber("--port", value, kLast));
               }},
    OptionRule{"--name", Needed, Needs::Nothing,
               [](Options& options, const Text& value) { options.name = value; }},
    OptionRule{"--no-locate", None, Needs::Nothing,
               [](Options& options, const Text&) { options.locate = false; }},
    OptionRule{"--quiet", None, Needs::Nothing, [](Options& options, const Text&) { options.quiet = true; }},
    OptionRule{"--once", None, Needs::Job, [](Options& options, const Text&) { options.once = true; }},
    OptionRule{"--push", Needed, Needs::Nothing,
               [](Options& options, const Text& value) { options.push.localFile = value; }},
    OptionRule{"--to", Needed, Needs::Push,
               [](Options& options, const Text& value) { options.push.remotePath = value; }},
    OptionRule{"--piece", Needed, Needs::Transfer,
               [](Options& options, const Text& value) {
                   options.transfer.pieceSize =
                       static_cast<std::size_t>(ParseNumber("--piece", value, kLargestPiece));
               }},
    OptionRule{"--no-resume", None, Needs::Transfer,
               [](Options& options, const Text&) { options.transfer.resumeAllowed = false; }},
    OptionRule{"--cut-after", Needed, Needs::Transfer,
               [](Options& options, const Text& value) {
                   constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
                   options.cut.afterBytes = ParseNumber("--cut-after", value, kMost);
               }},
    OptionRule{"--cut-how", Needed, Needs::Transfer,
               [](Options& options, const Text& value) { options.cut.method = ParseCutMethod(value); }},
};

}  // namespace

std::span<const OptionRule> GeneralOptionRules() {
    return kRules;
}

std::int64_t ParseNumber(const Text& option, const Text& value, std::int64_t most, std::int64_t least) {
    const auto number = ParseInteger64(value);
    if (!number || *number < least || *number > most)
        RefuseUsage(option + " takes a whole number from " + NumberText(least) + " to " + NumberText(most) +
                    ", not '" + value + "'");
    return *number;
}

}  // namespace rvl::deployserver
