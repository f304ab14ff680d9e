#include <array>

#include "tools/deployserver/option_rule.h"

namespace rvl::deployserver {
namespace {

using enum OptionValue;

template <Text UpdateOptions::*member>
void SetText(Options& options, const Text& value) {
    options.update.*member = value;
}

constexpr std::array kRules{
    OptionRule{"--update", Needed, Needs::Nothing, SetText<&UpdateOptions::localFile>},
    OptionRule{"--update-to", Needed, Needs::Update, SetText<&UpdateOptions::remotePath>},
    OptionRule{"--update-version", Needed, Needs::Update, SetText<&UpdateOptions::version>},
    OptionRule{"--update-timeout", Needed, Needs::Update,
               [](Options& options, const Text& value) {
                   constexpr std::int64_t kDay = 86400;
                   options.update.timeoutSeconds =
                       static_cast<std::uint32_t>(ParseNumber("--update-timeout", value, kDay));
               }},
};

}  // namespace

std::span<const OptionRule> UpdateOptionRules() {
    return kRules;
}

}  // namespace rvl::deployserver
