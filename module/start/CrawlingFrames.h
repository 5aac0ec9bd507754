// The frames that mark the current raster and its selection, painted straight on the drawing view. The host repaints
// over them at will; the next tick of the monitor timer paints them again, a step further on.
#pragma once

class CAcraster;

/// The next step of the pattern.
void AdvanceCrawlingFrames();

/// Paints the frame of the raster, that of its selection if it has one, and the handles of free rotation above both.
/// The raster is locked. False if one of the module's pattern bitmaps can't be loaded.
bool PaintCrawlingFrames(CAcraster& raster);

/// Frees what is kept from tick to tick.
void ForgetCrawlingFrames();
