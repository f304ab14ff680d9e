#include "util/dates.h"

#include <gtest/gtest.h>

#include "tests/util/recorded_errors.h"

namespace rvl {
namespace {

TEST(Dates, FormatsACalendarTime) {
    EXPECT_EQ(FormatDateTime({2003, 4, 5, 6, 7, 8}), "2003-04-05 06:07:08");
}

TEST(Dates, SQLDateIsUtc) {
    struct {
        platform::FileSeconds utc;
        TextView text;
    } const rows[] = {
        {0, "#1970-01-01 00:00:00#"},
        {-1, "#1969-12-31 23:59:59#"},
        {951782400, "#2000-02-29 00:00:00#"},
        {4107542399, "#2100-02-28 23:59:59#"},
        {4107542400, "#2100-03-01 00:00:00#"},
        {2147483648, "#2038-01-19 03:14:08#"},
        {-11644473600, "#1601-01-01 00:00:00#"},
        {-62167219200, "#0000-01-01 00:00:00#"},
        {253402300799, "#9999-12-31 23:59:59#"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(SQLDate(row.utc), row.text);
}

TEST(Dates, SQLDateRefusesOtherYears) {
    test::RecordedErrors errors;
    EXPECT_THROW(SQLDate(253402300800), Error);
    EXPECT_THROW(SQLDate(INT64_MIN), Error);
    EXPECT_EQ(errors.lines, (std::vector<Text>{"Util.SQLDate: 6", "Util.SQLDate: 6"}));
}

}  // namespace
}  // namespace rvl
