#pragma once

#include "worker/engine/commit_gate.h"
#include "worker/engine/request.h"

// Both ways between a raster file and a device-independent bitmap, the form in which the clipboard carries images.

namespace worker {

/// Puts the file's image, or its part inside the region, into the request's bitmap: 1 bit per pixel, with the file's
/// resolution. Throws imaging::ImagingError for an unreadable file and a region that meets no pixel.
void copyFromFile(CopyToClipboard& request);

/// Lays the request's bitmap on the file's image: transparent adds its ink only. What falls outside the image is left
/// out. Throws imaging::ImagingError, with the file as it was, when either can't be read.
void pasteIntoFile(const PasteFromClipboard& request, CommitGate& gate);

} // namespace worker
