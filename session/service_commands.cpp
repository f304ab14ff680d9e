#include "session/service_commands.h"

#include <utility>

#include "runtime/log_file.h"

namespace rvl {

void ServiceCommands::Add(const Text& command, std::size_t required, Handler handler) {
    m_commands[command] = {required, std::move(handler)};
}

void ServiceCommands::Handle(const Text& command, const std::vector<Text>& params) const {
    const auto known = m_commands.find(command);
    if (known == m_commands.end())
        Log("Unknown server message: " + command);
    else if (params.size() < known->second.required)
        Log("Invalid parameters on " + command);
    else
        known->second.handle(params);
}

}  // namespace rvl
