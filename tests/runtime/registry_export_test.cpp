#include <gtest/gtest.h>

#include <filesystem>

#include "runtime/registry_value.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

using enum platform::RegistryRoot;

cRegistry At(platform::RegistryRoot root, const Text& key) {
    cRegistry registry;
    registry.ClassKey = root;
    registry.SectionKey = key;
    return registry;
}

TEST(cRegistry, ExportsEveryType) {
    const Text key = "Software\\Export";
    const std::pair<const char*, platform::RegistryValue> values[] = {
        {"", Text("C:\\a \"b\" \xE9")},
        {"a\\\"", Text()},
        {"lines", Text("1\r\n2")},
        {"most", 4294967295u},
        {"path", platform::ExpandableText{"%A%\xE9"}},
        {"ten", 10u},
        {"wide", platform::ExpandableText{Text(25, '0')}}};
    for (const auto& [name, value] : values)
        platform::WriteRegistry(CurrentUser, key, name, value);
    platform::CreateRegistryKey(CurrentUser, key + "\\Empty");
    platform::WriteRegistry(CurrentUser, key + "\\Sub", "", Text("x"));
    test::WriteHostFile(test::DriveC() + "/key.reg", "old");
    At(CurrentUser, "\\" + key + "\\\\").ExportReg("C:\\key.reg");
    EXPECT_EQ(test::ReadHostFile(test::DriveC() + "/key.reg"),
              "REGEDIT4\r\n\r\n"
              "[HKEY_CURRENT_USER\\Software\\Export]\r\n"
              "@=\"C:\\\\a \\\"b\\\" \xE9\"\r\n"
              "\"a\\\\\\\"\"=\"\"\r\n"
              "\"lines\"=hex(1):31,0d,0a,32,00\r\n"
              "\"most\"=dword:ffffffff\r\n"
              "\"path\"=hex(2):25,41,25,e9,00\r\n"
              "\"ten\"=dword:0000000a\r\n"
              "\"wide\"=hex(2):30,30,30,30,30,30,30,30,30,30,30,30,30,30,30,30,30,30,30,30,30,\\\r\n"
              "  30,30,30,30,00\r\n"
              "\r\n"
              "[HKEY_CURRENT_USER\\Software\\Export\\Empty]\r\n\r\n"
              "[HKEY_CURRENT_USER\\Software\\Export\\Sub]\r\n@=\"x\"\r\n\r\n");
}

TEST(cRegistry, AnExportThatFailsLeavesNothing) {
    test::EmptyDriveC();
    test::WriteHostFile(test::DriveC() + "/export/folder/file", "");
    const cRegistry there = At(LocalMachine, "Software\\There");
    there.CreateKey();
    EXPECT_TRUE(test::ErrorOf([] { At(LocalMachine, "None").ExportReg("C:\\x.reg"); }).starts_with("2 "));
    EXPECT_TRUE(test::ErrorOf([&] { there.ExportReg("C:\\none\\x.reg"); }).starts_with("3 "));
    EXPECT_NE(test::ErrorOf([&] { there.ExportReg("C:\\export\\folder"); }),
              "");  // complete, but has no name to get
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(test::DriveC() + "/export"), {}), 1);
}

TEST(cRegistry, AssociatesDocuments) {
    const ExeAssociation association{"C:\\o o\\Orders.exe", "Orders.Document", "Order", "ord", 2};
    cRegistry::CreateEXEAssociation(association);
    cRegistry::CreateAdditionalEXEAssociations(association, {{"print", "&Print", "/p \"%1\""}});
    const std::pair<Text, Text> rows[] = {
        {".ord", "Orders.Document"},
        {"Orders.Document", "Order"},
        {"Orders.Document\\DefaultIcon", "C:\\o o\\Orders.exe,2"},
        {"Orders.Document\\shell\\open\\command", "\"C:\\o o\\Orders.exe\" \"%1\""},
        {"Orders.Document\\shell\\print", "&Print"},
        {"Orders.Document\\shell\\print\\command", "\"C:\\o o\\Orders.exe\" /p \"%1\""}};
    for (const auto& [key, text] : rows)
        EXPECT_EQ(At(ClassesRoot, key).TextValue(), text) << key;
    for (const ExeAssociation& wrong :
         {ExeAssociation{"p", "", "", "ord"}, {"p", "A\\B", "", "ord"}, {"p", "A", "", "."}})
        EXPECT_TRUE(test::ErrorOf([&] { cRegistry::CreateEXEAssociation(wrong); }).starts_with("5 "));
    EXPECT_FALSE(At(ClassesRoot, "A").KeyExists());
}

}  // namespace
}  // namespace rvl
