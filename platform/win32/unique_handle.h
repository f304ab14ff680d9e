#pragma once

#include <windows.h>

#include <memory>

namespace rvl::platform {

struct CloseKernelHandle {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

/// Owns a handle of the kernel: a process, an event, a token. Null when there is none; see OwnHandle.
using UniqueHandle = std::unique_ptr<void, CloseKernelHandle>;

/// What a call returned that reports failure as INVALID_HANDLE_VALUE or null.
inline UniqueHandle OwnHandle(HANDLE handle) {
    return UniqueHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

inline int LastError() {
    return static_cast<int>(GetLastError());
}

}  // namespace rvl::platform
