#pragma once

#include <windows.h>

#include "platform/win32/com.h"

namespace rvl::platform {

/// The Application object of the Access that owns a main window; null when it is not to be had. `busy` tells
/// that it, or one that might be it, did not take the question.
ComPointer<IDispatch> AccessApplicationOf(HWND accessWindow, bool& busy);

/// True for the answer of a program that is there but takes no calls at the moment: it shows a dialog of its
/// own, or works.
bool IsBusyAnswer(HRESULT result);

}  // namespace rvl::platform
