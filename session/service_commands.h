#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <vector>

#include "platform/text.h"

namespace rvl {

/// The messages of the service that a local process handles.
class ServiceCommands {
 public:
    using Handler = std::function<void(const std::vector<Text>& params)>;

    /// `required`: how many parameters there have to be.
    void Add(const Text& command, std::size_t required, Handler handler);

    /// Unknown commands, and those with too few parameters, are logged.
    void Handle(const Text& command, const std::vector<Text>& params) const;

 private:
    struct Entry {
        std::size_t required;
        Handler handle;
    };

    std::map<Text, Entry> m_commands;
};

}  // namespace rvl
