#include "session/access_installations.h"

#include <gtest/gtest.h>

#include "platform/access_database.h"
#include "runtime/registry_value.h"
#include "tests/deploy/test_database.h"
#include "tests/support/jet_database.h"
#include "tests/support/workstation.h"
#include "util/string_vector.h"

namespace rvl {
namespace {

using platform::RegistryRoot;

constexpr const char* kOffice = "C:\\Program Files\\Microsoft Office\\Office";

LongVector Numbers(const Text& text) {
    LongVector numbers;
    numbers.FromString(text, ",");
    return numbers;
}

class AccessInstallations : public test::FolderTest {
 protected:
    ~AccessInstallations() override { std::filesystem::remove_all(Office()); }

    static std::string Office() { return test::DriveC() + "/Program Files/Microsoft Office"; }

    static void Install(const Text& versions) {
        std::filesystem::remove_all(Office());
        const LongVector numbers = Numbers(versions);
        for (int index = 0; index < numbers.Count(); ++index)
            test::WriteHostFile(Office() + "/Office" + std::to_string(numbers.Item(index)) + "/MSACCESS.EXE",
                                "");
    }
};

/// Of the Office folder a path lies in: "11"; empty for no path.
Text VersionOf(const Text& path) {
    if (path.empty()) return "";
    const Text office = kOffice, program = "\\MSACCESS.EXE";
    EXPECT_TRUE(path.starts_with(office) && path.ends_with(program)) << path;
    return path.substr(office.size(), path.size() - office.size() - program.size());
}

TEST_F(AccessInstallations, VersionOfFormat) {
    const std::pair<Text, std::int32_t> rows[] = {{"02.00", 2},  {"06.68", 7}, {"07.53", 8}, {"08.50", 9},
                                                  {"09.50", 10}, {"09", 10},   {"9.50", 0},  {"10.00", 0},
                                                  {"0", 0},      {"", 0},      {" 08", 0}};
    for (const auto& [format, version] : rows)
        EXPECT_EQ(AccessVersionOfFormat(format), version) << format;
}

TEST_F(AccessInstallations, TheBestProgramForADatabase) {
    const struct {
        Text installed, allowed, format, best;
    } rows[] = {{"9,11", "9,11", "", "11"},    {"9", "9,11", "", "9"},         {"8", "9,11", "", ""},
                {"9,11", "9", "09.50", "9"},  // the list counts, not the format
                {"9,10,11", "", "08.50", "9"}, {"8,10,11", "", "08.50", "10"}, {"8,11", "", "08.50", "11"},
                {"8,9", "", "09.50", ""},      {"2,7,8", "", "02.00", "2"},    {"2,8", "", "06.68", "8"},
                {"8,9,11", "", "", "11"},      {"11,8,9", "", "05.00", "11"},  {"8", "", "", "8"}};
    WriteFile("a.mdb", test::JetDatabase("09.50"));
    const bool canReadDatabases = !platform::DatabaseAccessVersion(Path("a.mdb")).empty();
    for (const auto& [installed, allowed, format, best] : rows) {
        SCOPED_TRACE(installed + "|" + allowed + "|" + format);
        Install(installed);
        if (!format.empty() && !canReadDatabases) continue;
        const std::string database = format.empty() ? "damaged" : test::JetDatabase(format);
        WriteFile("a.mdb", database);
        EXPECT_EQ(VersionOf(GetBestAccessPath(Path("a.mdb"), Numbers(allowed), Numbers(installed))), best);
    }
    EXPECT_EQ(VersionOf(GetBestAccessPath(Path("none.mdb"), {}, Numbers("8"))), "8");
    if (!canReadDatabases) GTEST_SKIP() << "rows with a format: Wine has no database engine (DAO)";
}

/// The first rule that names an existing file wins; each row adds its value to those before it.
TEST_F(AccessInstallations, WhereAProgramIsFound) {
    Install("9");
    for (const char* folder : {"class", "root32", "root", "command"})
        test::WriteHostFile((HostFolder() / folder / "MSACCESS.EXE").string(), "");
    const struct {
        RegistryRoot root;
        Text key, name, data, found;
    } rows[] = {
        {RegistryRoot::LocalMachine, "Software\\Classes\\CLSID\\{A}\\LocalServer32", "",
         "C:\\test\\class\\MSACCESS.EXE", Text(kOffice) + "9\\MSACCESS.EXE"},
        {RegistryRoot::LocalMachine, "SOFTWARE\\Classes\\Access.Application.9\\CLSID", "", "{A}",
         "C:\\test\\class\\MSACCESS.EXE"},
        {RegistryRoot::LocalMachine, "SOFTWARE\\Wow6432Node\\Microsoft\\Office\\9.0\\Common\\InstallRoot",
         "Path", "C:\\test\\root32", "C:\\test\\root32\\MSACCESS.EXE"},
        {RegistryRoot::LocalMachine, "SOFTWARE\\Microsoft\\Office\\9.0\\Common\\InstallRoot", "Path",
         "C:\\test\\gone", "C:\\test\\class\\MSACCESS.EXE"},
        {RegistryRoot::LocalMachine, "SOFTWARE\\Microsoft\\Office\\9.0\\Common\\InstallRoot", "Path",
         "C:\\test\\root", "C:\\test\\root\\MSACCESS.EXE"},
        {RegistryRoot::ClassesRoot, "Access.Application.9\\shell\\open\\command", "",
         "C:\\test\\command\\MSACCESS.EXE \"%1\"", "C:\\test\\root\\MSACCESS.EXE"},
        {RegistryRoot::ClassesRoot, "Access.Application.9\\shell\\open\\command", "",
         "\"C:\\test\\command\\MSACCESS.EXE\" \"%1\"", "C:\\test\\command\\MSACCESS.EXE"}};
    for (const auto& [root, key, name, data, found] : rows) {
        platform::WriteRegistry(root, key, name, data);
        EXPECT_EQ(FindAccessLocation(9), found);
    }
}

}  // namespace
}  // namespace rvl
