#include <array>
#include <limits>

#include "tools/deployserver/line_breaks.h"
#include "tools/deployserver/option_rule.h"

namespace rvl::deployserver {
namespace {

using enum OptionValue;

constexpr std::array kRules{
    OptionRule{"--history", Needed, Needs::Nothing,
               [](Options& options, const Text& value) { options.people.historyFile = value; }},
    OptionRule{"--deny", Needed, Needs::Nothing,
               [](Options& options, const Text& value) {
                   constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
                   const auto id = static_cast<std::int32_t>(ParseNumber("--deny", value, kMost));
                   options.people.denied.push_back(id);
               }},
    OptionRule{
        "--deny-text", Needed, Needs::Denial,
        [](Options& options, const Text& value) { options.people.denialText = WithLineBreaks(value); }},
    OptionRule{"--orders", None, Needs::Nothing,
               [](Options& options, const Text&) { options.people.takesOrders = true; }},
};

}  // namespace

std::span<const OptionRule> PeopleOptionRules() {
    return kRules;
}

}  // namespace rvl::deployserver
