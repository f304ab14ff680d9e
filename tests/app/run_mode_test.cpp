#include "app/run_mode.h"

#include <gtest/gtest.h>

namespace rvl {
namespace {

TEST(RunMode, EveryCommandLine) {
    using enum RunMode;
    const std::pair<RunMode, std::vector<Text>> rows[] = {
        {Service, {"-service_mode"}},
        {Deploy, {"-deploy"}},
        {InstallSilently, {"-install-silent", "/install-silent"}},
        {RemoveSilently, {"-uninstall-silent", "-remove-silent", "/uninstall-silent", "/remove-silent"}},
        {Install, {"-install", "/install"}},
        {Remove, {"-uninstall", "-remove", "/uninstall", "/remove"}},
        {StartService, {"-start", "/start"}},
        {StopService, {"-stop", "/stop"}},
        {Update,
         {"-update-mode", "-update-mode \"C:\\a b\" 12", "-update-mode-debug x", "\"-update-mode\" x"}},
        {ServiceAfterUpdate, {"-service_mode-after-update \"C:\\x\"", "-service_mode-after-update-debug x"}},
        {Interactive,
         {"", "-SERVICE_MODE", "-service_mode ", " -service_mode", "-service_mode x", "/service_mode"}},
        {Interactive,
         {"/deploy", "-Install", "-stop-silent", "-update-modex", "-UPDATE-MODE x", "/update-mode"}},
        {Interactive,
         {"\"-service_mode\"", "-service_helper", "x -update-mode", "-start_frontend", "-deploy x"}}};
    for (const auto& [mode, lines] : rows)
        for (const Text& line : lines)
            EXPECT_EQ(ChooseRunMode(line), mode) << line;
}

TEST(RunMode, InteractiveModes) {
    using enum InteractiveMode;
    const std::pair<InteractiveMode, std::vector<Text>> rows[] = {
        {Helper, {"-service_helper", "-service_helper-debug"}},
        {StartFrontend, {"-start_frontend", "-start_frontend 12 Orders", "\"-start_frontend\" 12"}},
        {Switchboard,
         {"", "-service_helper ", "-SERVICE_HELPER", "-Start_frontend 12 x", "x -start_frontend"}}};
    for (const auto& [mode, lines] : rows)
        for (const Text& line : lines)
            EXPECT_EQ(ChooseInteractiveMode(line), mode) << line;
}

TEST(RunMode, DebugSuffix) {
    for (const auto& [line, left] : {std::pair<Text, Text>{"-x-DeBuG", "-x"},
                                     {"x -debug", "x "},
                                     {"-debug-debug", "-debug"},
                                     {"-x-debug ", "-x-debug "},
                                     {"debug", "debug"}}) {
        Text stripped = line;
        EXPECT_EQ(StripDebugSuffix(stripped), line != left) << line;
        EXPECT_EQ(stripped, left);
    }
}

}  // namespace
}  // namespace rvl
