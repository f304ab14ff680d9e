#include <algorithm>
#include <array>
#include <limits>

#include "tools/deployserver/option_rule.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

using enum OptionValue;

std::int32_t ParseId(const Text& option, const Text& value) {
    return static_cast<std::int32_t>(ParseNumber(option, value, std::numeric_limits<std::int32_t>::max()));
}

Text ParseAccessVersions(const Text& value) {
    for (const TextView number : SplitAt(value, ","))
        ParseId("--access-versions (between commas)", Text(number));
    return value;
}

Text ParseDestination(const Text& value) {
    Text name = UpperCase(value);
    if (name == "USER_PROFILE" || name == "PROGRAM_FILES" || name == "CUSTOM") return name;
    RefuseUsage("--destination takes user_profile, program_files or custom, not '" + value + "'");
}

template <OrderKind kind>
void AddOrder(Options& options, const Text& user) {
    options.frontend.orders.push_back({kind, user});
}

template <auto member>
void SetVersionText(Options& options, const Text& value) {
    options.frontend.version.*member = value;
}

constexpr std::array kRules{
    OptionRule{"--publish", Needed, Needs::Nothing, SetVersionText<&VersionOptions::folder>},
    OptionRule{"--frontend-id", Needed, Needs::Publish,
               [](Options& options, const Text& value) {
                   options.frontend.version.frontendId = ParseId("--frontend-id", value);
               }},
    OptionRule{"--version-id", Needed, Needs::Nothing,
               [](Options& options, const Text& value) {
                   options.frontend.versionId = ParseId("--version-id", value);
               }},
    OptionRule{"--frontend-name", Needed, Needs::Publish, SetVersionText<&VersionOptions::name>},
    OptionRule{"--main", Needed, Needs::Publish, SetVersionText<&VersionOptions::mainFile>},
    OptionRule{"--version-label", MayBeEmpty, Needs::Publish, SetVersionText<&VersionOptions::label>},
    OptionRule{"--access-versions", Needed, Needs::Publish,
               [](Options& options, const Text& value) {
                   options.frontend.version.accessVersions = ParseAccessVersions(value);
               }},
    OptionRule{"--mdw", Needed, Needs::Publish, SetVersionText<&VersionOptions::mdwPath>},
    OptionRule{"--icon", Needed, Needs::Publish, SetVersionText<&VersionOptions::iconFile>},
    OptionRule{"--desktop-icon", MayBeEmpty, Needs::Publish, SetVersionText<&VersionOptions::desktopIcon>},
    OptionRule{"--menu-icon", MayBeEmpty, Needs::Publish, SetVersionText<&VersionOptions::menuIcon>},
    OptionRule{"--destination", Needed, Needs::Publish,
               [](Options& options, const Text& value) {
                   options.frontend.version.destination = ParseDestination(value);
               }},
    OptionRule{"--custom-folder", Needed, Needs::Publish, SetVersionText<&VersionOptions::customFolder>},
    OptionRule{"--staging", Needed, Needs::Publish, SetVersionText<&VersionOptions::staging>},
    OptionRule{"--deploy-to", Needed, Needs::Nothing, AddOrder<OrderKind::Deploy>},
    OptionRule{"--available-to", Needed, Needs::Nothing, AddOrder<OrderKind::MakeAvailable>},
    OptionRule{"--remove-from", Needed, Needs::Nothing, AddOrder<OrderKind::Remove>},
    OptionRule{"--remove-template", None, Needs::Nothing,
               [](Options& options, const Text&) { AddOrder<OrderKind::Remove>(options, ""); }},
    OptionRule{"--report", None, Needs::Nothing,
               [](Options& options, const Text&) { options.frontend.report = true; }},
    OptionRule{"--verify", None, Needs::Orders,
               [](Options& options, const Text&) { options.frontend.verify = true; }},
};

/// Removing a user's deployment contradicts making one, removing the template contradicts all that needs it.
bool Contradict(const UserOrder& removal, const UserOrder& other) {
    if (removal.kind != OrderKind::Remove || other.kind == OrderKind::Remove) return false;
    return removal.user.empty() || EqualsNoCase(removal.user, other.user);
}

void CheckOrders(const FrontendOptions& options) {
    for (const UserOrder& removal : options.orders) {
        const bool ofTemplate = removal.kind == OrderKind::Remove && removal.user.empty();
        if (ofTemplate && options.IsPublishing()) RefuseUsage("--remove-template contradicts --publish");
        for (const UserOrder& other : options.orders)
            if (Contradict(removal, other))
                RefuseUsage((ofTemplate ? Text("--remove-template") : "--remove-from=" + removal.user) +
                            " contradicts what else is to become of the version for " + other.user);
    }
}

}  // namespace

std::span<const OptionRule> FrontendOptionRules() {
    return kRules;
}

void CheckFrontendOptions(const FrontendOptions& options) {
    CheckOrders(options);
    if (!options.IsPublishing() && !options.orders.empty() && !options.versionId)
        RefuseUsage("without --publish, --version-id has to name the version");
    if (!options.IsPublishing() && options.orders.empty() && options.versionId)
        RefuseUsage("--version-id needs --publish or what is to become of the version");
    const VersionOptions& version = options.version;
    if ((version.destination == "CUSTOM") != !version.customFolder.empty())
        RefuseUsage("--destination=custom and --custom-folder need each other");
}

}  // namespace rvl::deployserver
