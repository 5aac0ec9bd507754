#pragma once

namespace drawing::dwg {

/// Line weights are numbered in the form; DXF has them in 1/100 mm, or -1 ByLayer, -2 ByBlock, -3 the default.
int lineweightOf(int number);
/// The number of the weight, or of the nearest one that there is.
int lineweightNumber(int weight);

} // namespace drawing::dwg
