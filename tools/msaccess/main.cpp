// A stand-in for Microsoft Access: shows the main window of a database and does what the database file tells
// it.

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <thread>

#include "platform/file_handle.h"
#include "platform/full_path.h"
#include "platform/process.h"
#include "tools/msaccess/desktop_program.h"
#include "util/text_functions.h"

namespace {

using namespace rvl;
using namespace rvl::msaccess;

constexpr int kFailed = 1;

constexpr const char* kHelp =
    "Usage: msaccess [DATABASE [/wrkgrp FILE] [/user NAME] [/pwd PASSWORD]]\n"
    "       msaccess /order WINDOW ORDER\n"
    "A stand-in for Microsoft Access: shows an \"OMain\" window for a database and tells of itself: on "
    "Windows\n"
    "as a running Application object once it is asked to register itself or loses the keyboard, on Linux in\n"
    "the text properties ACCESS_VERSION, ACCESS_BUILD and ACCESS_CURRENT_PROJECT. It ends with 0 when it is\n"
    "closed.\n"
    "\n"
    "What it does stands in the database file, in lines that begin with \"msaccess: \"; while it runs it is\n"
    "told by /order with the number of its window or, on Linux, by the property MSACCESS_COMMAND of that:\n"
    "  xprop -id WINDOW -f MSACCESS_COMMAND 8u -set MSACCESS_COMMAND 'close database'\n"
    "\n"
    "  open PATH          open another database\n"
    "  close database     have none open\n"
    "  exit CODE          end; in the file: before a window is shown\n"
    "  slow SECONDS       only in the file: show the window that much later\n"
    "  hang               handle no events any more\n"
    "  ignore close       stay open when asked to close\n"
    "  stubborn           only in the file: the same, and ignore SIGTERM or WM_QUIT\n"
    "  cant-make-changes  show the dialog \"You can't make changes ...\"\n";

/// Empty when it cannot be read.
Text ContentOf(const Text& path) {
    using namespace platform;
    FileHandle file;
    std::int64_t size = 0;
    if (file.Open(path, FileAccess::Read, FileShare::ReadWrite, FileDisposition::OpenExisting) != 0 ||
        file.Length(size) != 0)
        return "";
    Text content(static_cast<std::size_t>(size), '\0');
    std::size_t read = 0;
    file.Read(content.data(), content.size(), read);
    content.resize(read);
    return content;
}

/// The current project is named in full, however the database was given.
Text FullDatabasePath(const Text& given) {
    Text path;
    return platform::FullPath(given, path) == 0 ? path : given;
}

int ShowDatabase(const Text& database) {
    const std::vector<Order> orders = OrdersOfDatabase(database.empty() ? "" : ContentOf(database));
    for (const auto& [what, argument] : orders) {
        if (what == "exit") return ParseLongOr(argument, 0);
        if (what == "stubborn") std::signal(SIGTERM, SIG_IGN);
        if (what == "slow") std::this_thread::sleep_for(std::chrono::seconds(ParseLongOr(argument, 0)));
    }
    return RunMainWindow(database, orders);
}

int Run(const std::vector<Text>& arguments) {
    const Text first = arguments.empty() ? "" : arguments[0];
    if (first == "--help") return std::fputs(kHelp, stdout) < 0;
    if (first == "/order" && arguments.size() == 3)
        return SendOrder(static_cast<std::uint32_t>(ParseLongOr(arguments[1], 0)), arguments[2]) ? 0
                                                                                                 : kFailed;
    return ShowDatabase(first.empty() ? "" : FullDatabasePath(first));
}

}  // namespace

int main(int argc, char** argv) try {
    return Run(platform::ProgramWords(argc, argv));
} catch (const std::exception& error) {
    platform::WriteStandardError(Text("msaccess: ") + error.what());
    return kFailed;
}
