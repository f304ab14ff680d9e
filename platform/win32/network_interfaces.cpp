#include "platform/network_interfaces.h"

#include <winsock2.h>

#include <iphlpapi.h>

namespace rvl::platform {
namespace {

/// Room for a MIB_IPADDRTABLE of the given size, and aligned like one.
using TableMemory = std::vector<ULONG>;

TableMemory MemoryOf(ULONG bytes) {
    return TableMemory(bytes / sizeof(ULONG) + 1);
}

/// In the order of addresses, which is the same at every call. Empty when it cannot be read.
TableMemory ReadTable() {
    ULONG size = 0;
    DWORD code = ERROR_INSUFFICIENT_BUFFER;
    TableMemory memory;
    while (code == ERROR_INSUFFICIENT_BUFFER) {  // it may grow between the calls
        memory = MemoryOf(size);
        size = static_cast<ULONG>(memory.size() * sizeof(ULONG));
        code = GetIpAddrTable(reinterpret_cast<MIB_IPADDRTABLE*>(memory.data()), &size, TRUE);
    }
    return code == NO_ERROR ? memory : TableMemory();
}

}  // namespace

std::vector<AddressRow> ReadAddressTable() {
    const TableMemory memory = ReadTable();
    if (memory.empty()) return {};
    const auto& table = *reinterpret_cast<const MIB_IPADDRTABLE*>(memory.data());
    std::vector<AddressRow> rows;
    for (DWORD index = 0; index < table.dwNumEntries; ++index) {
        const MIB_IPADDRROW& row = table.table[index];
        rows.push_back({row.dwAddr, row.dwMask, row.dwIndex, row.wType});
    }
    return rows;
}

}  // namespace rvl::platform
