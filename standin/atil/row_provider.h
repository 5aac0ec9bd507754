// Images handed on row by row.
#pragma once

#include <memory>

#include "standin/atil/data_model.h"

namespace imaging {
class Bitmap;
}

namespace Atil {
/// The rows of an image, or of a filter over other rows. Whoever gets one deletes it.
class HALVORAN_STANDIN_API RowProviderInterface
{
public:
    virtual ~RowProviderInterface() = default;

    virtual Size size() const = 0;
    virtual const DataModel& dataModel() const = 0;

    /// For the stand-in's own use: all rows at once, worked out at the first call, so that a turn or a resampling runs
    /// over the packed image rather than row by row. Never null.
    virtual std::shared_ptr<const imaging::Bitmap> rows() = 0;
    /// Whether all pixels have one value, which is then stored; cheap where rows() would not be.
    virtual bool oneValue(bool& ink) const;
};

/// Rows of another size. The filter takes over the provider that it reads from. The further arguments choose a way of
/// interpolation and a background; 0 stands for the usual one. Throws ATILException for a size without pixels.
HALVORAN_STANDIN_API RowProviderInterface* newResampleFilter(RowProviderInterface* rows, const Size& size,
                                                             int interpolation, int quality, int background, int left,
                                                             int top);
} // namespace Atil
