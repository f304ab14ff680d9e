#pragma once

namespace rvl {

/// The tab that Ctrl+Tab, or backwards Ctrl+Shift+Tab, goes to from the current one (from 0 on): round and
/// round. Without tabs it is the current one.
constexpr int NextTab(int current, int count, bool backwards) {
    if (count < 1) return current;
    return (current + (backwards ? count - 1 : 1)) % count;
}

}  // namespace rvl
