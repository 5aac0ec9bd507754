// Images in memory.
#pragma once

#include <cstdint>
#include <memory>

#include "standin/atil/row_provider.h"

namespace Atil {
enum TileSize
{
    kDefaultTileSize = 5
};

/// Copies share their pixels until one side writes, so that the copy of a large raster costs nothing to take.
class HALVORAN_STANDIN_API Image
{
public:
    /// All pixels of one value. Throws ATILException for a size without pixels or beyond all reason.
    Image(const Size& size, const DataModel* dataModel, const ImagePixel& pixel, TileSize tileSize);
    /// Takes all rows of the provider, which stays the caller's.
    Image(RowProviderInterface* rows, TileSize tileSize);
    /// For the stand-in's own use: an image over pixels that are there; depth is that of the file they came from.
    Image(std::shared_ptr<imaging::Bitmap> pixels, const DataModel& dataModel);
    Image(const Image& other);
    Image& operator=(const Image& other);
    ~Image();

    const Size& size() const;
    const DataModel& dataModel() const;
    /// Reads the same pixels another way; the bits per pixel must be the same, else an ATILException is thrown.
    void setDataModel(const DataModel* dataModel);

    /// Overlays the provider's rows at a place; pixels outside the image are left out. The data models must be alike,
    /// else an ATILException is thrown. The provider stays the caller's.
    void paste(RowProviderInterface* rows, const Offset& at, bool blend);

    /// The rows of a rectangle inside the image; null if it is not inside. They stay as they are when the image is
    /// written afterwards. The caller deletes the provider.
    RowProviderInterface* read(const Size& size, const Offset& at) const;
    /// The same, mirrored or turned: 0 none, 1 vertical mirror (top and bottom change places), 2 horizontal mirror
    /// (left and right change places), 5 a quarter turn counter-clockwise as seen, 6 clockwise. Null for any other
    /// code.
    RowProviderInterface* read(const Size& size, const Offset& at, int rotation) const;

    /// For the stand-in's own use.
    std::shared_ptr<const imaging::Bitmap> pixels() const;
    /// How often in this program's life an image's pixels were copied whole, because they were shared when one side
    /// wrote.
    static std::uint64_t wholeCopies();

private:
    struct State;
    std::unique_ptr<State> m_state;
};
} // namespace Atil
