#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "platform/registry.h"

namespace rvl {

/// The types of registry values that the system uses, with the registry's numbers.
enum class RegistryType : std::uint32_t { String = 1, Number = 4 };

/// A value of the registry, or nothing.
using RegistryVariant = std::variant<std::monostate, Text, std::uint32_t>;

/// Addresses one value of the registry: set where it lies, then read or write it. Failures of the registry
/// raise an Error with the Win32 code; a missing key only means missing values.
class cRegistry {
 public:
    platform::RegistryRoot ClassKey = platform::RegistryRoot::LocalMachine;
    Text SectionKey;                                ///< key path below the root
    Text ValueKey;                                  ///< empty: the default value of the key
    RegistryType ValueType = RegistryType::String;  ///< written, and expected when reading
    RegistryVariant Default;                        ///< given when there is no value

    /// The stored value as ValueType, or Default when there is none or it has no such form.
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
};

}  // namespace rvl
