#include "tests/support/private_network.h"

#include <algorithm>

#include "platform/network_interfaces.h"
#include "util/ipv4.h"

namespace rvl::test {

/// A process cannot change its network here: the script that runs the tests has made one.
bool EnterPrivateNetwork() {
    const std::vector<platform::AddressRow> table = platform::ReadAddressTable();
    return !table.empty() && std::all_of(table.begin(), table.end(), [](const platform::AddressRow& row) {
        return DottedText(row.address).starts_with("127.");
    });
}

}  // namespace rvl::test
