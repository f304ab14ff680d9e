#include <gtest/gtest.h>

#include <algorithm>

#include "tests/util/recorded_errors.h"
#include "util/long_vector.h"
#include "util/string_vector.h"
#include "util/variant_vector.h"

namespace rvl {
namespace {

using Lines = std::vector<Text>;

LongVector Longs(TextView text) {
    LongVector vector;
    vector.FromString(text, ",");
    return vector;
}

StringVector Strings(TextView text) {
    StringVector vector;
    vector.FromString(text, ",");
    return vector;
}

TEST(Vectors, GrowAndShrinkByTheRule) {
    LongVector vector;
    EXPECT_EQ(vector.Upper(), -1);
    const std::pair<int, int> rows[] = {{1, 99},    {100, 99},  {101, 199}, {200, 199},
                                        {201, 398}, {399, 398}, {400, 796}, {797, 796}};
    for (const auto& [count, upper] : rows) {
        for (int next = vector.Count(); next < count; ++next)
            EXPECT_EQ(vector.Add(7, true), next);
        EXPECT_EQ(vector.Upper(), upper) << count;
    }
    vector.Remove(0);
    EXPECT_EQ(vector.Upper(), 795);
    vector.Add(7, true);
    EXPECT_EQ(vector.Upper(), 795 + 795);
    vector.RemoveLong(7);
    EXPECT_EQ(vector.Upper(), -1);
    vector.Add(1, true);
    vector.Remove(0);
    EXPECT_EQ(vector.Upper(), -1);
    vector.Add(1, true);
    vector.Clear();
    EXPECT_EQ(vector.Upper(), -1);
    EXPECT_EQ(vector.Count(), 0);
}

TEST(Vectors, AddFindRemoveReverse) {
    StringVector vector = Strings("a,B,a");
    EXPECT_EQ(vector.Add("b", false, CompareMode::Text), 1);
    EXPECT_EQ(vector.Add("a", false), 0);
    EXPECT_EQ(vector.Count(), 3);
    EXPECT_EQ(vector.Add("b", false), 3);
    EXPECT_EQ(vector.Find("a", 1), 2);
    EXPECT_EQ(vector.Find("A"), -1);
    EXPECT_EQ(vector.Find("A", 1, CompareMode::Text), 2);
    EXPECT_EQ(vector.Find("a", 99), -1);
    for (const int outside : {-1, 4})
        vector.Remove(outside);
    vector.Remove(1);
    vector.Reverse();
    EXPECT_EQ(vector.ToString("|"), "b|a|a");
    vector.RemoveString(vector.Item(1), CompareMode::Text);
    EXPECT_EQ(vector.ToString("|"), "b");
    EXPECT_TRUE(vector.Contains("B", CompareMode::Text));
    EXPECT_FALSE(vector.Contains("B", CompareMode::Binary));
}

TEST(Vectors, CopyAndAppend) {
    StringVector vector = Strings("a,b");
    vector.Append(vector, true);
    EXPECT_EQ(vector.ToString(","), "a,b,a,b");
    vector.Append(Strings("B,c"), false, CompareMode::Text);
    EXPECT_EQ(vector.ToString(","), "a,b,a,b,c");
    StringVector copy = Strings("x");
    copy.Copy(vector);
    EXPECT_EQ(copy.ToString(","), "a,b,a,b,c");
    EXPECT_EQ(copy.Upper(), 99);
    copy.Copy(copy);
    EXPECT_EQ(copy.Count(), 5);
}

TEST(Vectors, AnIndexOutsideIsReported) {
    test::RecordedErrors errors;
    EXPECT_EQ(Longs("1").Item(1), 0);
    EXPECT_EQ(Strings("x").Item(-1), "");
    EXPECT_EQ(errors.lines, (Lines{"LongVector.Item: 9", "StringVector.Item: 9"}));
}

TEST(Vectors, TextsAreSplitAndJoined) {
    EXPECT_EQ(Longs("8,9,10").ToString(","), "8,9,10");
    EXPECT_EQ(Longs("8, 9").Item(1), 9);
    EXPECT_EQ(Longs("").Count(), 0);
    EXPECT_EQ(Strings("").Count(), 1);
    EXPECT_EQ(Strings("a,,b").ToString("--"), "a----b");
    StringVector vector;
    EXPECT_EQ(vector.ToString(","), "");
    vector.FromString("a--b", "--");
    EXPECT_EQ(vector.Count(), 1);
    test::RecordedErrors errors;
    EXPECT_EQ(Longs("8,x,10").ToString(","), "8");
    EXPECT_EQ(Longs("8,").ToString(","), "8");
    EXPECT_EQ(Longs("3000000000").ToString(","), "");
    const Text name = "LongVector.FromString: ";
    EXPECT_EQ(errors.lines, (Lines{name + "13", name + "13", name + "6"}));
}

TEST(Vectors, SortOrders) {
    for (const TextView text : {"", "1", "2,1", "3,1,2,3,-5,0,2147483647,-2147483648,3"}) {
        LongVector vector = Longs(text);
        std::vector<std::int32_t> expected;
        expected.reserve(static_cast<std::size_t>(vector.Count()));
        for (std::int32_t i = 0; i < vector.Count(); ++i)
            expected.push_back(vector.Item(i));
        std::sort(expected.begin(), expected.end());
        vector.Sort();
        for (std::int32_t i = 0; i < vector.Count(); ++i)
            EXPECT_EQ(vector.Item(i), expected[i]) << text;
    }
    StringVector strings = Strings("b,C,a,\xE4");
    strings.Sort(CompareMode::Binary);
    EXPECT_EQ(strings.ToString(","), "C,a,b,\xE4");
    strings.Sort(CompareMode::Text);
    EXPECT_EQ(strings.ToString(","), "a,b,C,\xE4");
}

TEST(Vectors, SortLimitIs16Bit) {
    test::RecordedErrors errors;
    LongVector vector;
    for (std::int32_t value = 32768; value > 0; --value)
        vector.Add(value % 4096, true);
    vector.Sort();
    EXPECT_EQ(errors.lines, Lines{});
    for (std::int32_t i = 1; i < vector.Count(); ++i)
        ASSERT_LE(vector.Item(i - 1), vector.Item(i));
    vector.Add(-1, true);
    vector.Sort();
    EXPECT_EQ(vector.Item(32768), -1);
    EXPECT_EQ(errors.lines, Lines{"LongVector.Sort: 6"});
}

TEST(Vectors, ComparePaths) {
    struct {
        TextView a, b;
        bool subfoldersFirst;
        int order;
    } const rows[] = {
        {"Data\\x.mdb", "a.mdb", true, -1},
        {"Data\\x.mdb", "a.mdb", false, 1},
        {"a\\x", "B\\a", true, -1},
        {"a\\x", "B\\a", false, -1},
        {"A\\x", "a\\X", true, 0},
        {"a\\b\\x", "a\\y", true, 1},
        {"b", "A", true, 1},
        {"\\z", "a", true, 1},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(StringVector::ComparePaths(row.a, row.b, row.subfoldersFirst), row.order) << row.a;
        EXPECT_EQ(StringVector::ComparePaths(row.b, row.a, row.subfoldersFirst), -row.order) << row.a;
    }
    StringVector vector = Strings("b,d\\a,A,c\\x\\z,c\\y");
    vector.SortPaths(true);
    EXPECT_EQ(vector.ToString(","), "c\\y,c\\x\\z,d\\a,A,b");
    vector.SortPaths(false);
    EXPECT_EQ(vector.ToString(","), "A,b,c\\y,c\\x\\z,d\\a");
}

TEST(Vectors, SetOperations) {
    const LongVector left = Longs("1,2,2,3"), right = Longs("2,4,4");
    EXPECT_EQ(left.Union(right).ToString(","), "1,2,2,3,4");
    EXPECT_EQ(left.Intersection(right).ToString(","), "2");
    EXPECT_EQ(left.Subtract(right).ToString(","), "1,3");
    EXPECT_EQ(left.Subtract(left).Upper(), -1);
    EXPECT_TRUE(left.Clone().Equals(left));
    EXPECT_FALSE(left.Equals(right));
    EXPECT_FALSE(Longs("1,2").Equals(Longs("2,1")));
    LongVector all = left.Clone();
    all.AddAll(right);
    EXPECT_EQ(all.ToString(","), "1,2,2,3,2,4,4");
    EXPECT_EQ(left.ToString(","), "1,2,2,3");
}

struct Thing : VariantObject {
    explicit Thing(int thingNumber) : number(thingNumber) {}
    std::shared_ptr<VariantObject> Clone() const override { return std::make_shared<Thing>(number + 1); }
    int number;
};

TEST(Vectors, VariantEquality) {
    const Variant object = std::make_shared<Thing>(1), other = std::make_shared<Thing>(1);
    const Variant null = std::shared_ptr<VariantObject>();
    const struct {
        Variant a, b;
        bool equal;
    } rows[] = {
        {1, std::int64_t{1}, true}, {1, 1.0, true},           {1, 1.5, false},
        {true, -1, true},           {true, 1, false},         {Variant(), 0, true},
        {Variant(), "", true},      {Variant(), "0", false},  {"1", 1, false},
        {"a", "A", false},          {object, object, true},   {object, other, false},
        {null, null, true},         {null, Variant(), false}, {Variant(), Variant(), true},
    };
    for (const auto& row : rows) {
        const auto at = &row - rows;
        EXPECT_EQ(VariantVector::AreEqual(row.a, row.b, CompareMode::Binary), row.equal) << at;
        EXPECT_EQ(VariantVector::AreEqual(row.b, row.a, CompareMode::Binary), row.equal) << at;
    }
    EXPECT_TRUE(VariantVector::AreEqual("a", "A", CompareMode::Text));
}

TEST(Vectors, VariantObjects) {
    const auto thing = std::make_shared<Thing>(1);
    VariantVector vector;
    EXPECT_EQ(vector.Add(thing, false), 0);
    EXPECT_EQ(vector.Add(thing, false), 0);
    EXPECT_EQ(std::get<std::shared_ptr<VariantObject>>(vector.Item(0)), thing);
    const VariantVector clone = vector.DeepClone();
    ASSERT_EQ(clone.Count(), 1);
    const auto copy = std::get<std::shared_ptr<VariantObject>>(clone.Item(0));
    EXPECT_EQ(dynamic_cast<const Thing&>(*copy).number, 2);

    vector.Add("x", true);
    test::RecordedErrors errors;
    EXPECT_EQ(vector.DeepClone().Count(), 0);
    vector.RemoveValue("x");
    vector.Add(std::shared_ptr<VariantObject>(), true);
    EXPECT_EQ(vector.DeepClone().Count(), 0);
    EXPECT_EQ(errors.lines, (Lines{"VariantVector.DeepClone: 424", "VariantVector.DeepClone: 91"}));
}

}  // namespace
}  // namespace rvl
