#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/text.h"

namespace rvl::platform {

/// A window of any process on this desktop; 0 is none. Any of them may vanish at any moment: what is asked of
/// one that is gone gives the empty answer, and what is done to it has no effect.
using WindowHandle = std::uint32_t;

/// The top-level windows, topmost first.
std::vector<WindowHandle> TopLevelWindows();

/// The windows inside a window, direct and indirect, an outer one before its inner ones.
std::vector<WindowHandle> ChildWindows(WindowHandle window);

bool IsWindow(WindowHandle window);
bool HasWindowClass(WindowHandle window, TextView windowClass);
Text WindowText(WindowHandle window);
std::uint32_t WindowProcessId(WindowHandle window);  ///< 0 when it is not known

/// A value that is kept with a window until it closes; a missing one reads as 0.
std::uint32_t WindowProperty(WindowHandle window, const char* name);
void SetWindowProperty(WindowHandle window, const char* name, std::uint32_t value);

WindowHandle ForegroundWindow();

/// Brings a window in front of all others and gives it the keyboard; a minimised one is restored. False when
/// the system does not allow it.
bool BringToForeground(WindowHandle window);

/// What the user does with the close button: the window may ask, refuse or be busy.
void RequestClose(WindowHandle window);

/// Ends the event loop of the window's thread.
void PostQuit(WindowHandle window);

/// Ends the window's process at once.
void TerminateProcessOf(WindowHandle window);

/// Brings a freshly started Access to register itself as a running object (message WM_USER + 18).
void AskToRegister(WindowHandle accessWindow);

/// The same by telling it that the user has turned away from it and back to it.
void PretendActivation(WindowHandle accessWindow);

/// Called once when the connection to the desktop breaks: the user's session is over, and the process ends
/// when the handler returns. Call after the window toolkit has started, which would end the process silently.
void OnDesktopLost(std::function<void()> handler);

}  // namespace rvl::platform
