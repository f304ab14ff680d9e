#pragma once

#include <cstdint>
#include <exception>

#include "platform/text.h"

namespace rvl {

/// Where the numbers of the system's own errors begin (hexadecimal 80040000).
inline constexpr std::int32_t kApplicationErrorBase = static_cast<std::int32_t>(0x80040000);

/// What is known of one error.
struct ErrorRecord {
    std::int32_t Number = 0;  ///< operating-system, database or own number (above)
    Text Source;              ///< component or qualified procedure that raised it
    Text Description;
    Text HelpFile;  ///< carried along, never shown
    std::int32_t HelpContext = 0;
    std::int32_t Erl = 0;  ///< line label at which it occurred, 0 when none
};

/// The one exception type of the system.
class Error : public std::exception {
 public:
    explicit Error(ErrorRecord record) : m_record(std::move(record)) {}
    Error(std::int32_t number, Text source, Text description)
        : m_record{number, std::move(source), std::move(description), {}, 0, 0} {}

    const ErrorRecord& Record() const { return m_record; }
    std::int32_t Number() const { return m_record.Number; }
    const Text& Source() const { return m_record.Source; }
    const Text& Description() const { return m_record.Description; }
    const char* what() const noexcept override { return m_record.Description.c_str(); }

 private:
    ErrorRecord m_record;
};

}  // namespace rvl
