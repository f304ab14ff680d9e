#include "tools/deployserver/options.h"

#include <algorithm>

#include "tools/deployserver/option_rule.h"

namespace rvl::deployserver {
namespace {

const OptionRule* FindRule(std::span<const OptionRule> rules, TextView name) {
    const auto rule =
        std::find_if(rules.begin(), rules.end(), [&](const OptionRule& each) { return name == each.name; });
    return rule == rules.end() ? nullptr : &*rule;
}

const OptionRule& RuleOf(const Text& name) {
    if (const auto* rule = FindRule(GeneralOptionRules(), name)) return *rule;
    if (const auto* rule = FindRule(FrontendOptionRules(), name)) return *rule;
    if (const auto* rule = FindRule(UpdateOptionRules(), name)) return *rule;
    if (const auto* rule = FindRule(PeopleOptionRules(), name)) return *rule;
    RefuseUsage("unknown argument '" + name + "'");
}

bool IsMet(Needs needs, const Options& options) {
    const FrontendOptions& frontend = options.frontend;
    switch (needs) {
        case Needs::Nothing:
            return true;
        case Needs::Push:
            return options.IsPushing();
        case Needs::Transfer:
            return options.TransfersFiles();
        case Needs::Publish:
            return frontend.IsPublishing();
        case Needs::Orders:
            return !frontend.orders.empty();
        case Needs::Update:
            return options.update.IsUpdating();
        case Needs::Denial:
            return !options.people.denied.empty();
        case Needs::Job:
            return options.TransfersFiles() || frontend.NeedsReport();
    }
    return false;
}

Text NameOf(Needs needs) {
    switch (needs) {
        case Needs::Nothing:
            return "nothing";
        case Needs::Push:
            return "--push";
        case Needs::Transfer:
            return "--push, --publish or --update";
        case Needs::Publish:
            return "--publish";
        case Needs::Orders:
            return "--deploy-to, --available-to, --remove-from or --remove-template";
        case Needs::Update:
            return "--update";
        case Needs::Denial:
            return "--deny";
        case Needs::Job:
            return "--push, --publish, --update, --report or what is to become of a version";
    }
    return "";
}

/// Goes through the arguments and keeps the rules of the options it met.
class Parser {
 public:
    explicit Parser(const std::vector<Text>& arguments) : m_arguments(arguments) {}

    Options Parse() {
        while (m_index < m_arguments.size())
            ApplyNext();
        if (!m_options.help && !m_options.version) Check();
        return m_options;
    }

 private:
    void ApplyNext() {
        const Text& argument = m_arguments[m_index++];
        const std::size_t equals = argument.find('=');
        const OptionRule& rule = RuleOf(argument.substr(0, equals));
        m_met.push_back(&rule);
        Text value;
        if (equals == Text::npos)
            value = rule.value == OptionValue::None ? "" : NextArgument(rule);
        else if (rule.value != OptionValue::None)
            value = argument.substr(equals + 1);
        else
            RefuseUsage(Text(rule.name) + " takes no value");
        if (rule.value == OptionValue::Needed && value.empty())
            RefuseUsage(Text(rule.name) + " needs a value that is not empty");
        rule.apply(m_options, value);
    }

    const Text& NextArgument(const OptionRule& rule) {
        if (m_index == m_arguments.size()) RefuseUsage(Text(rule.name) + " needs a value");
        return m_arguments[m_index++];
    }

    void Check() const {
        for (const OptionRule* rule : m_met)
            if (!IsMet(rule->needs, m_options))
                RefuseUsage(Text(rule->name) + " needs " + NameOf(rule->needs));
        if (m_options.IsPushing() && m_options.push.remotePath.empty()) RefuseUsage("--push needs --to");
        if (m_options.once && m_options.people.takesOrders)
            RefuseUsage("--orders contradicts --once, which does not wait for them");
        CheckFrontendOptions(m_options.frontend);
    }

    const std::vector<Text>& m_arguments;
    std::size_t m_index = 0;
    Options m_options;
    std::vector<const OptionRule*> m_met;
};

}  // namespace

void RefuseUsage(const Text& reason) {
    throw WrongUsage{reason};
}

Options ParseOptions(const std::vector<Text>& arguments) {
    return Parser(arguments).Parse();
}

}  // namespace rvl::deployserver
