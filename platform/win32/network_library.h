#pragma once

#include <windows.h>

#include <lm.h>

#include <memory>
#include <utility>

namespace rvl::platform {

struct FreeNetworkBuffer {
    void operator()(void* buffer) const { NetApiBufferFree(buffer); }
};

/// What a query of the network library gives.
template <class Information>
using NetworkBuffer = std::unique_ptr<Information, FreeNetworkBuffer>;

/// Null when the query fails: a function that takes a place for a pointer and returns a status.
template <class Information, class Query>
NetworkBuffer<Information> AskNetworkLibrary(const Query& query) {
    BYTE* buffer = nullptr;
    const NET_API_STATUS status = query(&buffer);
    NetworkBuffer<Information> information(reinterpret_cast<Information*>(buffer));
    return status == NERR_Success ? std::move(information) : nullptr;
}

}  // namespace rvl::platform
