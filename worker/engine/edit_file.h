#pragma once

#include "imaging/raster_file.h"
#include "worker/engine/commit_gate.h"
#include "worker/engine/request.h"

// Operations that change the image in a file and write it back in place, in the file's own format and resolution.
// Each throws imaging::ImagingError when it can't be done; the file is then as it was.

namespace worker {

void invertFile(const Invert& request, CommitGate& gate);

/// What turns out of the image is lost. Throws for an angle or a pivot out of range.
void rotateFile(const Rotate& request, CommitGate& gate);

/// Throws for a mode that there is not, and for a selection that is asked for and missing.
void filterFile(const Filter& request, CommitGate& gate);

/// The side in pixels of a square of `size` tenths of a millimetre at the image's resolution; at least 1.
int filterSide(std::uint32_t size, imaging::Resolution resolution);

/// The format in which a file that was read is written back: its own where that can be written, else TIFF group 4.
imaging::Format rewriteFormat(imaging::Format format);

/// Writes an image that was read from the file back to it, inside the gate.
void writeBack(const std::filesystem::path& file, const imaging::RasterFile& raster, CommitGate& gate);

} // namespace worker
