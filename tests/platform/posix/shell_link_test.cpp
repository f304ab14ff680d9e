#include "platform/shell_link.h"

#include <sys/resource.h>
#include <utime.h>

#include <csignal>
#include <vector>

#include "platform/error.h"
#include "platform/full_path.h"
#include "platform/posix/host_path.h"
#include "platform/posix/link_format.h"
#include "tests/platform/shell_link_fixture.h"
#include "tests/support/host_shell.h"

namespace rvl::platform {
namespace {

using test::DriveC;
using test::Fields;
using test::kHostLink;
using test::kLink;
using ShellLinkFile = test::ShellLinkTest;

/// Every value that lnkinfo shows under a name, each with "|" behind it.
std::string Shown(const std::string& output, const std::string& name) {
    std::string values;
    for (std::size_t at = 0; (at = output.find("\t" + name + "\t", at)) != std::string::npos; ++at) {
        const std::size_t value = output.find(": ", at) + 2;
        values += output.substr(value, output.find('\n', value) - value) + "|";
    }
    return values;
}

TEST_F(ShellLinkFile, AnotherProgramReadsTheSame) {
    if (test::OutputOf("command -v lnkinfo").empty())
        GTEST_SKIP() << "lnkinfo is missing (package liblnk-utils)";
    for (const char* name : {"/Pr\xC3\xB6g/RVL Client.EXE", "/Pr\xC3\xB6g"}) {
        const utimbuf times{0, 1'700'000'000};
        utime((c + name).c_str(), &times);
    }
    ShellLink bare, messy = full;
    bare.target = "C:\\none\\x.mdb";
    messy.target = "c:/PR\xD6G\\.\\rvl client.exe";
    messy.showCommand = 2;
    const std::string rest =
        "Pr\xC3\xB6g|RVL Client.EXE|5 bytes|Nov 14, 2023 22:13:20.000000000 UTC|"
        "Nov 14, 2023 22:13:20|Nov 14, 2023 22:13:20|"
        "-start_frontend 3 \"\xC3\x89t\xC3\xA9\"|C:\\W\xC3\xBF\\|D\xC3\xA9sc|"
        "C:\\i c.ico|-4|";
    const std::string none = "none|x.mdb|0 bytes|Not set (0)|Not set (0)|Not set (0)|0|";
    const std::tuple<ShellLink, char, std::string> rows[] = {
        {full, 7, "C:\\Pr\xC3\xB6g\\RVL Client.EXE|" + rest},
        {messy, 1, "c:\\PR\xC3\x96G\\rvl client.exe|" + rest},  // the items' names read as they exist
        {bare, 1, "C:\\none\\x.mdb|" + none}};
    for (const auto& [link, showCommand, expected] : rows) {
        ASSERT_EQ(WriteShellLink(kLink, link), 0);
        const std::string output = test::OutputOf("LC_ALL=C.UTF-8 lnkinfo -v '" + c + kHostLink + "'");
        std::string shown;
        for (const char* name :
             {"Local path", "Long name", "File size", "Modification time", "Command line arguments",
              "Working directory", "Description", "Icon location", "Icon index"})
            shown += Shown(output, name);
        EXPECT_EQ(shown, expected) << output;
        // At the show command's place lnkinfo shows other bytes.
        EXPECT_EQ(test::ReadHostFile(c + kHostLink)[0x3C], showCommand);
    }
}

/// A shortcut as other programs write it: 8-bit texts, a relative path, a mapped drive, further data behind.
TEST_F(ShellLinkFile, ReadsNetworkLink) {
    const auto u32 = [](int value) { return std::string{static_cast<char>(value), 0, 0, 0}; };
    const std::string share = u32(33) + u32(2) + u32(20) + u32(0) + std::string("\0\0\2\0", 4) +
                              std::string("\\\\srv\\Fr\xF6nts\0", 13);
    const std::string location = u32(28 + 33 + 6) + u32(28) + u32(2) + u32(0) + u32(0) + u32(28) +
                                 u32(28 + 33) + share + std::string("a.mdb\0", 6);
    std::string bytes = u32(0x4C) + std::string(kLinkClass) + u32(0x02 | 0x08 | 0x20) +
                        std::string(32, '\0') + u32(9) + u32(3) + std::string(12, '\0') + location +
                        std::string("\3\0rel\4\0/\xFF /", 11);
    ShellLink link;
    ASSERT_EQ(ParseLink(bytes + u32(8) + u32(1), link), 0);
    EXPECT_EQ(Fields(link), Fields(ShellLink{"\\\\srv\\Fr\xF6nts\\a.mdb", "/\xFF /", "", "", "", 9, 3}));
    test::WriteHostFile(c + "/net.lnk", bytes);
    EXPECT_EQ(ResolveShellLink("C:\\net.lnk", 1, 0, 0, link), 2);
    EXPECT_EQ(WriteShellLink("C:\\net.lnk", link), 3);
}

TEST_F(ShellLinkFile, MalformedInput) {
    ASSERT_EQ(WriteShellLink(kLink, full), 0);
    const std::string good = test::ReadHostFile(c + kHostLink);
    const auto parse = [](std::vector<char> exact) {  // a buffer that ends where its bytes end
        ShellLink link;
        try {
            return ParseLink({exact.data(), exact.size()}, link);
        } catch (const Error&) {
            return 0;  // a text with other characters
        }
    };
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_EQ(parse({good.begin(), good.begin() + length}), length < good.size() - 4 ? 11 : 0) << length;
    for (std::size_t at = 0; at < good.size(); ++at)
        for (const int change : {0x01, 0x80, 0xFF, 0x7E}) {
            std::vector<char> bad(good.begin(), good.end());
            bad[at] = static_cast<char>(bad[at] ^ change);
            EXPECT_GE(parse(bad), at < 20 ? 11 : 0) << at;
        }
    ShellLink kept = full;
    for (const std::string& bytes :
         {std::string(), std::string(2000, 'x'), std::string(2 << 20, 'L'), good.substr(0, 200)}) {
        test::WriteHostFile(c + "/bad.lnk", bytes);
        EXPECT_EQ(ReadShellLink("C:\\bad.lnk", kept), 11);
        EXPECT_EQ(Fields(kept), Fields(full));
    }
}

/// No room after 100 bytes.
TEST_F(ShellLinkFile, AFullDiskLeavesWhatWasThere) {
    ASSERT_EQ(WriteShellLink(kLink, full), 0);
    for (const std::size_t size : {65535, 65536})
        EXPECT_EQ(WriteShellLink("C:\\long.lnk", {"", "", "", Text(size, '\xFE'), "", 0, 1}),
                  size == 65535 ? 0 : 87);
    EXPECT_EQ(WriteShellLink(kLink, {"\\\\server\\share\\x", "", "", "", "", 0, 1}), 3);
    const std::string before = test::ReadHostFile(c + kHostLink);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit fullDisk{100, limit.rlim_max};  // no room after 100 bytes
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &fullDisk);
    const int code = WriteShellLink(kLink, full);
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(code, 112);
    EXPECT_EQ(test::ReadHostFile(c + kHostLink), before);
    for (const char* folder : {"/Desk", "/"})  // no temporary file stays
        for (const auto& entry : std::filesystem::directory_iterator(c + folder))
            EXPECT_NE(entry.path().extension(), ".tmp");
}

TEST_F(ShellLinkFile, FullPathsOfTheHost) {
    const Text current = WindowsPath(std::filesystem::current_path().string());
    const std::pair<Text, Text> rows[] = {
        {"\\a\\..", "C:\\"}, {"x\\..\\y", current + "\\y"}, {".", current},
        {"/", "Z:\\"},       {"/etc/../\xFF", "Z:\\\xFF"},  {DriveC() + "/../drive_c/A", "C:\\A"}};
    for (const auto& [path, expected] : rows) {
        Text absolute;
        EXPECT_EQ(FullPath(path, absolute), 0) << path;
        EXPECT_EQ(absolute, expected);
    }
}

}  // namespace
}  // namespace rvl::platform
