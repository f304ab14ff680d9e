#pragma once

#include <optional>

#include "tools/msaccess/order.h"

namespace rvl::msaccess {

/// What the title bar says of the open database (its file name); empty: none is open.
Text MainTitle(const Text& database);

/// The windows of one Access.
class AccessView {
 public:
    virtual ~AccessView() = default;
    virtual void ShowDatabase(const Text& path) = 0;  ///< in full; empty: none is open
    virtual void ShowCantMakeChanges(const Text& message) = 0;
    virtual void Paint() = 0;
};

/// One Access, which carries out orders.
class AccessProgram {
 public:
    AccessProgram(AccessView& view, const Text& database);

    void Perform(const Order& order);
    void Perform(const std::vector<Order>& orders);

    void RequestClose();  ///< what the user does with the close button
    bool RefusesToEnd() const { return m_stubborn; }
    const std::optional<int>& ExitCode() const { return m_exitCode; }  ///< none while it runs

 private:
    AccessView& m_view;
    bool m_ignoresClose = false;
    bool m_stubborn = false;
    std::optional<int> m_exitCode;
};

}  // namespace rvl::msaccess
