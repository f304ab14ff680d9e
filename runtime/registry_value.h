#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "platform/registry.h"

namespace rvl {

/// The types of registry values that the system uses, with the registry's numbers.
enum class RegistryType : std::uint32_t { String = 1, ExpandString = 2, Number = 4 };

/// A value of the registry, or nothing.
using RegistryVariant = std::variant<std::monostate, Text, std::uint32_t>;

/// A program that opens the documents of one kind.
struct ExeAssociation {
    Text program;                ///< its path
    Text className;              ///< such as "Orders.Document"
    Text description;            ///< of the documents, as the shell shows it
    Text extension;              ///< of the documents, with or without its point
    std::int32_t iconIndex = 0;  ///< of the documents' icon in the program
};

/// A further thing that the program does with a document, beside opening it.
struct ExeVerb {
    Text verb;       ///< such as "print"
    Text menuText;   ///< in the document's menu, such as "&Print"; empty: as the shell names the verb
    Text arguments;  ///< behind the program, such as "/p \"%1\""
};

/// Addresses one value of the registry: set where it lies, then read or write it. Failures of the registry
/// raise an Error with the Win32 code; a missing key only means missing values.
class cRegistry {
 public:
    platform::RegistryRoot ClassKey = platform::RegistryRoot::LocalMachine;
    Text SectionKey;                                ///< key path below the root
    Text ValueKey;                                  ///< empty: the default value of the key
    RegistryType ValueType = RegistryType::String;  ///< written, and expected when reading
    RegistryVariant Default;                        ///< given when there is no value
    bool NoExpandStrings = false;                   ///< expandable text is given as it is stored

    /// The stored value as ValueType, or Default when there is none or it has no such form. What was stored
    /// as expandable text has its environment variables expanded, whichever text ValueType is.
    RegistryVariant Value() const;
    Text TextValue() const;             ///< the same as text: a number in decimal, nothing as the empty text
    std::uint32_t NumberValue() const;  ///< the same as number: 0 for nothing and for a text that is none

    /// Creates the key when necessary. A value that has no form as ValueType raises 13.
    void SetValue(const RegistryVariant& value) const;
    bool DeleteValue() const;  ///< false: it was not there

    bool KeyExists() const;
    void CreateKey() const;
    bool DeleteKey() const;  ///< with all below; false: it was not there
    std::vector<Text> EnumerateValues() const;
    std::vector<Text> EnumerateSections() const;

    /// Writes the key with all below as a "REGEDIT4" text file, the .reg format of Windows 95 and NT 4: 8-bit
    /// characters, CR LF. A file that is there is replaced by the complete new one; a failure leaves it as it
    /// was and raises an Error with the Win32 code (2: the key is missing).
    void ExportReg(const Text& path) const;

    /// Makes the program open the documents with the extension, whoever opened them before, in
    /// HKEY_CLASSES_ROOT. An empty class or extension, or one with a backslash, raises 5.
    static void CreateEXEAssociation(const ExeAssociation& association);
    /// Adds further verbs to an association; one that exists is replaced.
    static void CreateAdditionalEXEAssociations(const ExeAssociation& association,
                                                const std::vector<ExeVerb>& verbs);
};

}  // namespace rvl
