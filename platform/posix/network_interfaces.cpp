#include "platform/network_interfaces.h"

#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include <memory>

namespace rvl::platform {
namespace {

std::uint32_t AddressOf(const sockaddr* address) {
    return address != nullptr ? reinterpret_cast<const sockaddr_in*>(address)->sin_addr.s_addr : 0;
}

}  // namespace

std::vector<AddressRow> ReadAddressTable() {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) return {};
    const std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> list(first, freeifaddrs);
    std::vector<AddressRow> table;
    for (const ifaddrs* row = first; row != nullptr; row = row->ifa_next) {
        if (row->ifa_addr == nullptr || row->ifa_addr->sa_family != AF_INET) continue;
        // Only whether the interface is up counts as a change, not the kernel's other flags.
        table.push_back({AddressOf(row->ifa_addr), AddressOf(row->ifa_netmask), if_nametoindex(row->ifa_name),
                         row->ifa_flags & (IFF_UP | IFF_RUNNING)});
    }
    return table;
}

}  // namespace rvl::platform
