#pragma once

#include "platform/platform.h"

/// The window procedure in front of the floating frame's own, for CFloatingBar::HookFrame: its close box asks about the
/// module in place of hiding the bar. The frame stays whatever the answer.
LRESULT CALLBACK FloatingFrameProc(HWND frame, UINT message, WPARAM wParam, LPARAM lParam);
