#pragma once

#include <cstdint>
#include <vector>

namespace rvl::platform {

/// A row of the machine's IPv4 address table; addresses in network byte order.
struct AddressRow {
    std::uint32_t address = 0;
    std::uint32_t mask = 0;
    std::uint32_t interfaceIndex = 0;
    std::uint32_t flags = 0;  ///< what else the system tells; only its change matters

    bool operator==(const AddressRow&) const = default;
};

/// The table as it is now; empty when it cannot be read.
std::vector<AddressRow> ReadAddressTable();

}  // namespace rvl::platform
