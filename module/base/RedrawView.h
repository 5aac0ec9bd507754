#pragma once

#include "platform/platform.h"

/// Paints a view anew at once, with its background.
void RedrawView(CWnd* view);

/// The same with the view of the active drawing, if there is one.
void RedrawActiveView();
