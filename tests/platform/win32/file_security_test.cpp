#include "platform/file_security.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include <filesystem>
#include <memory>

#include "platform/win32/wide.h"
#include "tests/support/workstation.h"

namespace rvl::platform {
namespace {

constexpr std::uint32_t kFull = 0x1F01FF, kReadAndExecute = 0x1200A9;

struct FreeLocal {
    void operator()(void* memory) const { LocalFree(memory); }
};

/// The owner and the access list of a file as the system writes them in its own language.
std::string DescriptorOf(const std::string& path, SECURITY_INFORMATION parts) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    LPSTR text = nullptr;
    std::wstring name = std::filesystem::path(path).make_preferred().wstring();
    if (GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, parts, nullptr, nullptr, nullptr, nullptr,
                              &descriptor) != 0)
        return "none";
    const std::unique_ptr<void, FreeLocal> owned(descriptor);
    ConvertSecurityDescriptorToStringSecurityDescriptorA(descriptor, SDDL_REVISION_1, parts, &text, nullptr);
    const std::unique_ptr<void, FreeLocal> ownedText(text);
    return text;
}

class FileSecurityTest : public testing::Test {
 protected:
    FileSecurityTest() { test::WriteHostFile(c + "/file", "x"); }
    ~FileSecurityTest() override {
        ReplaceAccess(file, {"Everyone"}, kFull);  // to be removable
        test::EmptyDriveC();
    }

    /// An entry of an account that has nothing to do with the file comes back.
    void SkipWithoutAccessLists() const {
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;WD)(A;;FR;;;NU)", SDDL_REVISION_1,
                                                             &descriptor, nullptr);
        const std::unique_ptr<void, FreeLocal> owned(descriptor);
        test::WriteHostFile(c + "/probe", "x");
        SetFileSecurityW(L"C:\\probe", DACL_SECURITY_INFORMATION, descriptor);
        if (DescriptorOf(c + "/probe", DACL_SECURITY_INFORMATION).find(";NU)") == std::string::npos)
            GTEST_SKIP()
                << "Wine keeps the rights of the owner and of everyone as Unix has them, and no access lists";
    }

    static std::string ListOf(const std::string& path) {
        return DescriptorOf(path, DACL_SECURITY_INFORMATION);
    }

    const std::string c = test::DriveC();
    const Text file = "C:\\FILE", folder = "C:\\folder\\";
};

TEST_F(FileSecurityTest, WhatEveryoneMayDo) {
    EXPECT_EQ(ReplaceAccess(file, {}, kFull), 0);
    EXPECT_EQ(ListOf(c + "/file").find(";WD)"), std::string::npos);
    EXPECT_EQ(AddAccess(file, "Everyone", kReadAndExecute), 0);
    EXPECT_NE(ListOf(c + "/file").find("(A;;0x1200a9;;;WD)"), std::string::npos) << ListOf(c + "/file");
    EXPECT_EQ(RemoveAllAccess(file, true), 0);
    EXPECT_EQ(ListOf(c + "/file").find(";WD)"), std::string::npos) << ListOf(c + "/file");
}

TEST_F(FileSecurityTest, GrantsAndProtection) {
    SkipWithoutAccessLists();
    if (IsSkipped()) return;
    EXPECT_EQ(RemoveAllAccess(file, true), 0);
    EXPECT_TRUE(ListOf(c + "/file").starts_with("D:P"));
    EXPECT_EQ(
        AddAccess(file, "Administrators", kFull) + AddAccess(file, "NT AUTHORITY\\SYSTEM", kReadAndExecute),
        0);
    EXPECT_EQ(AddAccess(file, "SYSTEM", 2), 0);  // in addition
    for (const char* entry : {"(A;;FA;;;BA)", "(A;;0x1200ab;;;SY)"})
        EXPECT_NE(ListOf(c + "/file").find(entry), std::string::npos) << ListOf(c + "/file");
}

TEST_F(FileSecurityTest, FoldersPassGrantsOn) {
    SkipWithoutAccessLists();
    if (IsSkipped()) return;
    std::filesystem::create_directory(c + "/folder");
    EXPECT_EQ(ReplaceAccess(folder, {"Administrators", "no such account", "Everyone"}, kFull), 0);
    test::WriteHostFile(c + "/folder/sub/file", "x");
    for (const char* path : {"/folder", "/folder/sub", "/folder/sub/file"})
        for (const char* account : {";BA)", ";WD)"})
            EXPECT_NE(ListOf(c + path).find(account), std::string::npos) << path << ListOf(c + path);
}

TEST_F(FileSecurityTest, Owners) {
    SkipWithoutAccessLists();
    if (IsSkipped()) return;
    for (const auto& [account, sid] : {std::pair{"Administrators", "O:BA"}, {"SYSTEM", "O:SY"}}) {
        EXPECT_EQ(SetFileOwner(file, account), 0) << account;
        EXPECT_EQ(DescriptorOf(c + "/file", OWNER_SECURITY_INFORMATION), sid);
    }
}

TEST_F(FileSecurityTest, ResultCodes) {
    const struct {
        Text path, account;
        int add, removeAll;
    } rows[] = {{"C:\\none", "Administrators", 2, 2},
                {"C:\\none\\x", "Administrators", 3, 3},
                {"Q:\\x", "Administrators", test::CodeOfNoDrive(), test::CodeOfNoDrive()},
                {file, "W\\no such account", 1332, 0},
                {file, "W\\", 1332, 0},
                {file, Text("SYSTEM\0x", 8), 1332, 0}};
    for (const auto& [path, account, add, removeAll] : rows) {
        EXPECT_EQ(AddAccess(path, account, 1), add) << path << account;
        EXPECT_EQ(SetFileOwner(path, account), add) << path << account;
        EXPECT_EQ(RemoveAllAccess(path, true), removeAll) << path;
    }
    EXPECT_TRUE(EnableProcessPrivilege("SeTakeOwnershipPrivilege"));
    EXPECT_FALSE(EnableProcessPrivilege("SeNoSuchPrivilege"));
}

}  // namespace
}  // namespace rvl::platform
