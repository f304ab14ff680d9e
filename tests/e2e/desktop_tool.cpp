// Shows and does with the windows of other programs what the tests cannot from outside Windows:
//   desktop_tool property WINDOW NAME    prints the number that is noted at the window, 0 for none
//   desktop_tool end-session PROCESS     tells the windows of the process that the session ends

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

BOOL CALLBACK EndSession(HWND window, LPARAM wanted) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    DWORD_PTR answer = 0;
    constexpr UINT kPatience = 5000;
    if (process == static_cast<DWORD>(wanted) &&
        SendMessageTimeoutW(window, WM_QUERYENDSESSION, 0, 0, SMTO_NORMAL, kPatience, &answer) != 0)
        SendMessageTimeoutW(window, WM_ENDSESSION, answer, 0, SMTO_NORMAL, kPatience, &answer);
    return TRUE;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view what = argc > 2 ? argv[1] : "";
    if (what == "end-session") return EnumWindows(EndSession, std::atol(argv[2])) ? 0 : 1;
    if (what != "property" || argc < 4) return 2;
    HWND window = static_cast<HWND>(LongToHandle(std::atol(argv[2])));
    std::printf("%u\n", static_cast<unsigned>(HandleToULong(GetPropA(window, argv[3]))));
    return IsWindow(window) ? 0 : 1;
}
