// Where rows come from: a whole image, a part of one, one mirrored or turned, one value all over.
#pragma once

#include <memory>

#include "imaging/geometry.h"
#include "standin/atil/row_provider.h"

namespace Atil {

/// The part of the bitmap, mirrored or turned by the codes of Image::read; null for an unknown code.
std::unique_ptr<RowProviderInterface> makeRows(std::shared_ptr<const imaging::Bitmap> source, const imaging::Rect& part,
                                               int rotation, const DataModel& dataModel);

std::unique_ptr<RowProviderInterface> makeOneValueRows(const Size& size, bool ink, const DataModel& dataModel);

} // namespace Atil
