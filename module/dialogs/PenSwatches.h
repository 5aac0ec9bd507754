#pragma once

#include "platform/platform.h"

/// Makes the list of the colours from index 1 on, each a framed square of 16 by 16.
void MakePenSwatches(CImageList& swatches, int count);
