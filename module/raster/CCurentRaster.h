#pragma once

class CAcraster;

/// Holds the current raster locked for write. All work on the current raster goes through one of these; on the heap it
/// keeps one lock across a whole stroke. A raster that can't be locked has vanished from the drawing and is dropped,
/// and so is one of a drawing that the user has left.
class CCurentRaster
{
public:
    CCurentRaster();
    virtual ~CCurentRaster();
    CCurentRaster(const CCurentRaster&) = delete;
    CCurentRaster& operator=(const CCurentRaster&) = delete;

    /// The raster that was locked, if it is the current one still; null once it was replaced or dropped.
    CAcraster* GetIfCurrent() const;

    /// The raster that was locked; null when there was none. Not owned.
    CAcraster* m_pRaster;

private:
    unsigned m_nSerial = 0; // of the raster
};

/// Deletes the current raster, if there is one, without a word.
void DropCurrentRaster();

/// The same, if the user works on another drawing now. Nobody may try to lock such a raster: what fails there leaves
/// its lock on the wrong document.
void DropRasterOfOtherDrawing();
