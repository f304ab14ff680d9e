#include "runtime/registry_value.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

void SetClassText(const Text& key, const Text& text) {
    cRegistry registry;
    registry.ClassKey = platform::RegistryRoot::ClassesRoot;
    registry.SectionKey = key;
    registry.SetValue(text);
}

/// Nothing, or a path, would write into keys of others.
bool IsKeyName(const Text& name) {
    return !name.empty() && name.find('\\') == Text::npos;
}

void CheckKeyName(const Text& name, TextView procedure) {
    if (!IsKeyName(name)) RaiseInvalidCall(procedure);
}

void SetCommand(const ExeAssociation& association, const Text& verb, const Text& arguments) {
    SetClassText(association.className + "\\shell\\" + verb + "\\command",
                 '"' + association.program + "\" " + arguments);
}

}  // namespace

void cRegistry::CreateEXEAssociation(const ExeAssociation& association) {
    constexpr const char* kProcedure = "cRegistry.CreateEXEAssociation";
    const Text& extension = association.extension;
    const Text suffix = extension.starts_with('.') ? extension.substr(1) : extension;
    CheckKeyName(association.className, kProcedure);
    CheckKeyName(suffix, kProcedure);
    SetClassText(association.className, association.description);
    SetClassText(association.className + "\\DefaultIcon",
                 association.program + ',' + NumberText(association.iconIndex));
    SetCommand(association, "open", "\"%1\"");
    // Last: the extension never leads to a class that is not complete.
    SetClassText('.' + suffix, association.className);
}

void cRegistry::CreateAdditionalEXEAssociations(const ExeAssociation& association,
                                                const std::vector<ExeVerb>& verbs) {
    constexpr const char* kProcedure = "cRegistry.CreateAdditionalEXEAssociations";
    CheckKeyName(association.className, kProcedure);
    for (const ExeVerb& verb : verbs)
        CheckKeyName(verb.verb, kProcedure);
    for (const ExeVerb& verb : verbs) {
        SetCommand(association, verb.verb, verb.arguments);
        if (!verb.menuText.empty())
            SetClassText(association.className + "\\shell\\" + verb.verb, verb.menuText);
    }
}

}  // namespace rvl
