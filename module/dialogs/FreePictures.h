#pragma once

#include "platform/platform.h"

/// Takes the bitmaps that a dialog's template put into its picture controls out of them and deletes them, when the
/// dialog goes: the controls themselves do not.
void FreePictures(CWnd& dialog);
