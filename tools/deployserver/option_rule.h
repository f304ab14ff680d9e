#pragma once

#include <span>

#include "tools/deployserver/options.h"

namespace rvl::deployserver {

enum class OptionValue { None, Needed, MayBeEmpty };

/// What else has to be on the command line for an option to mean something.
enum class Needs { Nothing, Push, Transfer, Publish, Orders, Update, Denial, Job };

struct OptionRule {
    const char* name;
    OptionValue value;
    Needs needs;
    void (*apply)(Options& options, const Text& value);  ///< raises WrongUsage
};

std::span<const OptionRule> GeneralOptionRules();
std::span<const OptionRule> FrontendOptionRules();
std::span<const OptionRule> UpdateOptionRules();
std::span<const OptionRule> PeopleOptionRules();

/// Checks what no single option can tell; raises WrongUsage.
void CheckFrontendOptions(const FrontendOptions& options);

[[noreturn]] void RefuseUsage(const Text& reason);

/// A whole number from `least` to `most`; raises WrongUsage for any other value.
std::int64_t ParseNumber(const Text& option, const Text& value, std::int64_t most, std::int64_t least = 1);

}  // namespace rvl::deployserver
