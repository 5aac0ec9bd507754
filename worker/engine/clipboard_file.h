#pragma once

#include "worker/engine/clipboard.h"
#include "worker/engine/commit_gate.h"
#include "worker/engine/request.h"

namespace worker {

/// Puts the file's image, or its part inside the region, on the clipboard: 1 bit per pixel, with the file's resolution.
/// Throws imaging::ImagingError for an unreadable file and a region that meets no pixel.
void copyFromFile(const CopyToClipboard& request, Clipboard& clipboard);

/// Lays the clipboard's bitmap on the file's image: transparent adds its ink only. What falls outside the image is left
/// out. Throws imaging::ImagingError, with the file as it was, when either can't be read.
void pasteIntoFile(const PasteFromClipboard& request, Clipboard& clipboard, CommitGate& gate);

} // namespace worker
