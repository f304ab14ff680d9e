#include "app/service_control.h"

#include <gtest/gtest.h>

#include "app/event_source.h"
#include "app/helper_run_entry.h"
#include "app/service_installation.h"
#include "platform/registry.h"
#include "runtime/process_state.h"
#include "runtime/system_information.h"
#include "runtime/unload_mode.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

using platform::RegistryRoot;
using platform::RegistryValue;

constexpr const char* kService = "SYSTEM\\CurrentControlSet\\Services\\RVLClient";
constexpr const char* kRun = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr const char* kEvents = "SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\RVLClient";

/// A text may be one with variables.
std::optional<RegistryValue> Read(const Text& key, const Text& name) {
    const auto value = ReadRegistry(RegistryRoot::LocalMachine, key, name);
    const auto* text = value ? std::get_if<platform::ExpandableText>(&*value) : nullptr;
    return text != nullptr ? RegistryValue(text->text) : value;
}

Text Quoted(const Text& program) {
    return "\"" + program + "\"";
}

/// Stands for the installed program: one that ends at once, since this one would run its tests.
class ServiceControl : public testing::Test {
 protected:
    void SetUp() override { State().UpdateTargetPath = test::kProgramThatEnds; }
    void TearDown() override {
        State().UpdateTargetPath.clear();
        for (const char* key : {kService, kRun, kEvents})
            platform::DeleteRegistryKey(RegistryRoot::LocalMachine, key);
    }
};

TEST_F(ServiceControl, WhatIsInstalled) {
    struct Case {
        Text account, stored;
        bool automatic, interactive;
        std::uint32_t start, type;
    };
    const Case cases[] = {{"LocalSystem", "LocalSystem", true, false, 2, 16},
                          {"LocalSystem", "LocalSystem", true, true, 2, 272},  // nobody else may show windows
                          {"ann", DomainName() + "\\ann", false, false, 3, 16},
                          {"OTHER\\ann", "OTHER\\ann", false, false, 3, 16}};
    for (const Case& row : cases) {
        EXPECT_FALSE(GetServiceInstalled());
        EXPECT_EQ(InstallService(row.account, "", row.automatic, {}, row.interactive), 0);
        EXPECT_TRUE(GetServiceInstalled());
        EXPECT_EQ(Read(kService, "ImagePath"),
                  RegistryValue(Quoted(test::kProgramThatEnds) + " -service_mode"));
        EXPECT_EQ(Read(kService, "ObjectName"), RegistryValue(row.stored));
        EXPECT_EQ(Read(kService, "Start"), RegistryValue(row.start));
        EXPECT_EQ(Read(kService, "Type"), RegistryValue(row.type));
        EXPECT_EQ(RemoveService(), 0);
    }
}

TEST_F(ServiceControl, HelperRunEntry) {
    const Text ours = Quoted(test::kProgramThatEnds) + " -service_helper",
               other = test::kOtherProgramThatEnds;
    const std::pair<Text, Text> rows[] = {
        {"", ours},
        {Quoted(other), ours},
        {"\"/no such\\file\" -service_helper", ours},
        {other + " -service_helper-debug", other + " -service_helper-debug"},
        {Quoted(other) + " -service_helper", Quoted(other) + " -service_helper"}};
    for (const auto& [before, after] : rows) {
        WriteRegistry(RegistryRoot::LocalMachine, kRun, "RVLClientHelper", before);
        ServiceControl_ServiceInstalled(false);  // not installed: none of its business
        EXPECT_EQ(Read(kRun, "RVLClientHelper"), RegistryValue(before));
        EXPECT_EQ(InstallService(), 0);
        EXPECT_EQ(Read(kRun, "RVLClientHelper"), RegistryValue(after));
        WriteRegistry(RegistryRoot::LocalMachine, kRun, "RVLClientHelper", before);
        EXPECT_EQ(InstallService(), 1073);
        EXPECT_EQ(Read(kRun, "RVLClientHelper"), RegistryValue(after));
        EXPECT_EQ(RemoveService(), 0);
        EXPECT_FALSE(Read(kRun, "RVLClientHelper"));
    }
    EXPECT_EQ(RemoveService(), 1060);
}

TEST_F(ServiceControl, EventSource) {
    const Text key = "CLSID\\{E7BC34A3-BA86-11CF-84B1-CBC2DA68BF6C}\\InprocServer32";
    platform::DeleteRegistryKey(RegistryRoot::ClassesRoot, "CLSID");
    RegisterEventSource();
    EXPECT_EQ(Read(kEvents, "EventMessageFile"), RegistryValue(""));
    WriteRegistry(RegistryRoot::ClassesRoot, key, "", Text("C:\\Windows\\ntsvc.ocx"));
    RegisterEventSource();
    EXPECT_EQ(Read(kEvents, "EventMessageFile"), RegistryValue("C:\\Windows\\ntsvc.ocx"));
    EXPECT_EQ(Read(kEvents, "TypesSupported"), RegistryValue(7u));
}

TEST(UnloadMode, NamesAndProtection) {
    const std::pair<Text, bool> rows[] = {
        {"Closing", false},     {"Unloaded", true},       {"Session Ending", true}, {"Task Manager", false},
        {"MDI Closing", false}, {"Owner Closing", false}, {"Unknown #6", false}};
    int number = 0;
    for (const auto& [name, allowed] : rows) {
        const auto mode = static_cast<UnloadMode>(number++);
        EXPECT_EQ(UnloadModeName(mode), name);
        EXPECT_EQ(MayUnload(mode, false), allowed);
        EXPECT_TRUE(MayUnload(mode, true));
    }
}

}  // namespace
}  // namespace rvl
