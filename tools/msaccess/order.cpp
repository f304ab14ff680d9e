#include "tools/msaccess/order.h"

#include "util/text_functions.h"

namespace rvl::msaccess {

Order ParseOrder(TextView line) {
    for (const TextView what : {"open", "close database", "slow", "exit", "hang", "ignore close", "stubborn",
                                "cant-make-changes"}) {
        if (line == what) return {Text(what), ""};
        if (line.starts_with(Text(what) + " ")) return {Text(what), Trim(line.substr(what.size()))};
    }
    return {Text(line), ""};
}

std::vector<Order> OrdersOfDatabase(TextView content) {
    constexpr TextView kMark = "msaccess:";
    std::vector<Order> orders;
    for (TextView line : SplitAt(content, "\n")) {
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.starts_with(kMark)) orders.push_back(ParseOrder(TrimView(line.substr(kMark.size()))));
    }
    return orders;
}

}  // namespace rvl::msaccess
