#include "util/path_text.h"

#include <gtest/gtest.h>

namespace rvl {
namespace {

TEST(PathText, TakesPathsApart) {
    struct {
        TextView path, parent, folder, name, withBackslash;
    } const rows[] = {
        {"C:\\a\\b\\", "C:\\a\\", "C:\\a\\b\\", "", "C:\\a\\b\\"},
        {"C:\\a\\b", "C:\\a\\", "C:\\a\\", "b", "C:\\a\\b\\"},
        {"C:\\", "", "C:\\", "", "C:\\"},
        {"abc", "", "", "abc", "abc\\"},
        {"a/b", "", "a/", "b", "a/b\\"},
        {"\\", "", "\\", "", "\\"},
        {"\\\\server\\share", "\\\\server\\", "\\\\server\\", "share", "\\\\server\\share\\"},
        {"", "", "", "", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(BackOneDir(row.path), row.parent) << row.path;
        EXPECT_EQ(FolderOf(row.path), row.folder) << row.path;
        EXPECT_EQ(FileNameOf(row.path), row.name) << row.path;
        EXPECT_EQ(WithTrailingBackslash(row.path), row.withBackslash) << row.path;
    }
}

}  // namespace
}  // namespace rvl
