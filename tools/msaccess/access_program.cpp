#include "tools/msaccess/access_program.h"

#include <chrono>
#include <thread>

#include "util/text_functions.h"

namespace rvl::msaccess {
namespace {

[[noreturn]] void Hang() {
    for (;;)
        std::this_thread::sleep_for(std::chrono::hours(1));
}

}  // namespace

Text MainTitle(const Text& database) {
    return database.empty() ? "Microsoft Access" : "Microsoft Access - [" + database + "]";
}

AccessProgram::AccessProgram(AccessView& view, const Text& database) : m_view(view) {
    m_view.ShowDatabase(database);
}

void AccessProgram::Perform(const Order& order) {
    const auto& [what, argument] = order;
    if (what == "open" || what == "close database") m_view.ShowDatabase(argument);
    if (what == "cant-make-changes")
        m_view.ShowCantMakeChanges(
            "You can't make changes to the objects of this database while another user has it open.");
    if (what == "stubborn") m_stubborn = true;
    if (what == "ignore close" || what == "stubborn") m_ignoresClose = true;
    if (what == "exit") m_exitCode = ParseLongOr(argument, 0);
    m_view.Paint();
    if (what == "hang") Hang();
}

void AccessProgram::Perform(const std::vector<Order>& orders) {
    for (const Order& order : orders)
        Perform(order);
}

void AccessProgram::RequestClose() {
    if (!m_ignoresClose) m_exitCode = 0;
}

}  // namespace rvl::msaccess
