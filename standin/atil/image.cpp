#include "standin/atil/image.h"

#include <atomic>
#include <optional>

#include "imaging/bitmap.h"
#include "imaging/error.h"
#include "imaging/fill.h"
#include "imaging/paste.h"
#include "standin/atil/atil_exception.h"
#include "standin/atil/row_sources.h"

namespace Atil {

namespace {
std::atomic<std::uint64_t> copies = 0;
}

// An image of one value has no pixels of its own until they are needed.
struct Image::State
{
    State(const Size& s, const DataModel& model) : size(s), dataModel(model) {}

    Size size;
    DataModel dataModel;
    bool ink = false; // of all pixels, while there is no bitmap
    std::shared_ptr<imaging::Bitmap> bitmap;

    std::shared_ptr<imaging::Bitmap> made()
    {
        if (!bitmap) {
            bitmap = std::make_shared<imaging::Bitmap>(imaging::Size{size.width, size.height});
            if (ink)
                imaging::fill(*bitmap, bitmap->bounds(), true);
        }
        return bitmap;
    }

    // The pixels, which nobody else sees from now on.
    imaging::Bitmap& own()
    {
        made();
        if (bitmap.use_count() > 1) {
            bitmap = std::make_shared<imaging::Bitmap>(*bitmap);
            ++copies;
        }
        return *bitmap;
    }
};

namespace {

// Runs an operation of the imaging library and lets its errors out as this library's own.
template <class Operation> auto guarded(Operation operation)
{
    try {
        return operation();
    } catch (const imaging::ImagingError& failure) {
        throw ATILException(failure.what());
    }
}

} // namespace

Image::Image(const Size& size, const DataModel* dataModel, const ImagePixel& pixel, TileSize)
{
    if (size.width <= 0 || size.height <= 0 || !dataModel)
        throw ATILException("An image needs pixels and a data model.");
    m_state = std::make_unique<State>(size, *dataModel);
    m_state->ink = pixel.value.bitonal != 0;
    const std::int64_t pixels = std::int64_t(size.width) * size.height;
    if (size.width > imaging::Bitmap::maximumSide || size.height > imaging::Bitmap::maximumSide ||
        pixels > imaging::Bitmap::maximumPixels)
        throw ATILException("An image of that size is beyond all reason.");
}

Image::Image(RowProviderInterface* rows, TileSize)
{
    if (!rows)
        throw ATILException("An image was to be made of no rows.");
    m_state = std::make_unique<State>(rows->size(), rows->dataModel());
    if (!rows->oneValue(m_state->ink))
        m_state->bitmap = guarded([&] { return std::const_pointer_cast<imaging::Bitmap>(rows->rows()); });
}

Image::Image(std::shared_ptr<imaging::Bitmap> pixels, const DataModel& dataModel)
    : m_state(std::make_unique<State>(Size(pixels->width(), pixels->height()), dataModel))
{
    m_state->bitmap = std::move(pixels);
}

Image::Image(const Image& other) : m_state(std::make_unique<State>(*other.m_state)) {}

Image& Image::operator=(const Image& other)
{
    if (this != &other)
        *m_state = *other.m_state;
    return *this;
}

Image::~Image() = default;

const Size& Image::size() const
{
    return m_state->size;
}

const DataModel& Image::dataModel() const
{
    return m_state->dataModel;
}

void Image::setDataModel(const DataModel* dataModel)
{
    if (!dataModel || dataModel->bitsPerPixel() != m_state->dataModel.bitsPerPixel())
        throw ATILException("A data model does not fit the image's pixels.");
    m_state->dataModel = *dataModel;
}

void Image::paste(RowProviderInterface* rows, const Offset& at, bool)
{
    if (!rows || !(rows->dataModel() == m_state->dataModel))
        throw ATILException("Rows of another data model were pasted into an image.");
    guarded([&] {
        bool ink = false;
        const Size part = rows->size();
        if (rows->oneValue(ink)) {
            imaging::fill(m_state->own(), imaging::Rect{at.x, at.y, at.x + part.width, at.y + part.height}, ink);
        } else {
            imaging::paste(m_state->own(), *rows->rows(), imaging::Point{at.x, at.y}, imaging::PasteMode::opaque);
        }
    });
}

RowProviderInterface* Image::read(const Size& size, const Offset& at) const
{
    return read(size, at, 0);
}

RowProviderInterface* Image::read(const Size& size, const Offset& at, int rotation) const
{
    const Size whole = m_state->size;
    const bool inside = at.x >= 0 && at.y >= 0 && size.width > 0 && size.height > 0 &&
                        size.width <= whole.width - at.x && size.height <= whole.height - at.y;
    if (!inside)
        return nullptr;
    if (!m_state->bitmap && rotation == 0)
        return makeOneValueRows(size, m_state->ink, m_state->dataModel).release();
    const imaging::Rect part{at.x, at.y, at.x + size.width, at.y + size.height};
    return makeRows(guarded([&] { return m_state->made(); }), part, rotation, m_state->dataModel).release();
}

std::shared_ptr<const imaging::Bitmap> Image::pixels() const
{
    return guarded([&] { return m_state->made(); });
}

std::uint64_t Image::wholeCopies()
{
    return copies;
}

} // namespace Atil
