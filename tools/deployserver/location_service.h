#pragma once

#include <cstdint>
#include <memory>

#include "net/socket.h"
#include "tools/deployserver/console.h"

namespace rvl::deployserver {

/// Answers every LOCATE datagram, so that workstations find this server by broadcast.
class LocationService : private SocketEventAdapter {
 public:
    LocationService(Text serverName, const Console& console);
    ~LocationService() override;
    LocationService(const LocationService&) = delete;
    LocationService& operator=(const LocationService&) = delete;

    void Open(std::uint16_t port);  ///< raises an Error when the port cannot be had
    void Close();

 private:
    void DataReceived(std::int16_t index, const Text& datagram) override;
    void Error(std::int16_t index, std::int32_t number, const Text& description) override;
    void Reply(const Text& host, std::uint16_t port);

    const Console& m_console;
    Text m_reply;
    std::uint16_t m_port = 0;
    std::shared_ptr<Socket> m_socket;
};

}  // namespace rvl::deployserver
