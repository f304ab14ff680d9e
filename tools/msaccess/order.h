#pragma once

#include <vector>

#include "platform/text.h"

namespace rvl::msaccess {

/// Something the stand-in is told to do: "open C:\fe\orders.mdb".
struct Order {
    Text what;      ///< one of the words of the help text
    Text argument;  ///< empty when it has none
};

/// A word that is not known is an order of that name, which nobody carries out.
Order ParseOrder(TextView line);

/// What stands in a database file, a line each: "msaccess: slow 3".
std::vector<Order> OrdersOfDatabase(TextView content);

}  // namespace rvl::msaccess
