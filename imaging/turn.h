#pragma once

#include "imaging/bitmap.h"

namespace imaging {

// Quarter turns, as seen on the sheet. Width and height change places.
//
//   A B C   clockwise  D A   counter-clockwise  C F
//   D E F              E B                      B E
//                      F C                      A D

Bitmap turnClockwise(const Bitmap& bitmap);
Bitmap turnCounterClockwise(const Bitmap& bitmap);

} // namespace imaging
