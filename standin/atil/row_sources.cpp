#include "standin/atil/row_sources.h"

#include "imaging/bitmap.h"
#include "imaging/crop.h"
#include "imaging/error.h"
#include "imaging/fill.h"
#include "imaging/mirror.h"
#include "imaging/resample.h"
#include "imaging/turn.h"
#include "standin/atil/atil_exception.h"

namespace Atil {

bool RowProviderInterface::oneValue(bool&) const
{
    return false;
}

namespace {

enum Rotation
{
    none = 0,
    verticalMirror = 1,
    horizontalMirror = 2,
    counterClockwise = 5,
    clockwise = 6
};

bool known(int rotation)
{
    return rotation == none || rotation == verticalMirror || rotation == horizontalMirror ||
           rotation == counterClockwise || rotation == clockwise;
}

// What the sources have in common: the work is done once, when the rows are first asked for.
class LazyRows : public RowProviderInterface
{
public:
    LazyRows(const Size& size, const DataModel& dataModel) : m_size(size), m_dataModel(dataModel) {}

    Size size() const override { return m_size; }
    const DataModel& dataModel() const override { return m_dataModel; }
    std::shared_ptr<const imaging::Bitmap> rows() override
    {
        if (!m_rows)
            m_rows = make();
        return m_rows;
    }

protected:
    virtual std::shared_ptr<const imaging::Bitmap> make() = 0;

private:
    Size m_size;
    DataModel m_dataModel;
    std::shared_ptr<const imaging::Bitmap> m_rows;
};

Size sizeAfter(const imaging::Rect& part, int rotation)
{
    const bool turned = rotation == clockwise || rotation == counterClockwise;
    return turned ? Size(part.height(), part.width()) : Size(part.width(), part.height());
}

class ImageRows final : public LazyRows
{
public:
    ImageRows(std::shared_ptr<const imaging::Bitmap> source, const imaging::Rect& part, int rotation,
              const DataModel& dataModel)
        : LazyRows(sizeAfter(part, rotation), dataModel), m_source(std::move(source)), m_part(part),
          m_rotation(rotation)
    {}

protected:
    // The whole image as it is costs nothing: its pixels are shared.
    std::shared_ptr<const imaging::Bitmap> make() override
    {
        const bool whole = m_part == m_source->bounds();
        if (m_rotation == none && whole)
            return m_source;
        if (m_rotation == clockwise || m_rotation == counterClockwise) {
            const imaging::Bitmap part = whole ? imaging::Bitmap() : imaging::extract(*m_source, m_part);
            const imaging::Bitmap& upright = whole ? *m_source : part;
            return std::make_shared<imaging::Bitmap>(m_rotation == clockwise ? imaging::turnClockwise(upright)
                                                                             : imaging::turnCounterClockwise(upright));
        }
        auto copy = std::make_shared<imaging::Bitmap>(whole ? *m_source : imaging::extract(*m_source, m_part));
        if (m_rotation == verticalMirror)
            imaging::mirrorVertical(*copy);
        if (m_rotation == horizontalMirror)
            imaging::mirrorHorizontal(*copy);
        return copy;
    }

private:
    std::shared_ptr<const imaging::Bitmap> m_source;
    imaging::Rect m_part;
    int m_rotation;
};

class OneValueRows final : public LazyRows
{
public:
    OneValueRows(const Size& size, bool ink, const DataModel& dataModel) : LazyRows(size, dataModel), m_ink(ink) {}

    bool oneValue(bool& ink) const override
    {
        ink = m_ink;
        return true;
    }

protected:
    std::shared_ptr<const imaging::Bitmap> make() override
    {
        auto bitmap = std::make_shared<imaging::Bitmap>(imaging::Size{size().width, size().height});
        if (m_ink)
            imaging::fill(*bitmap, bitmap->bounds(), true);
        return bitmap;
    }

private:
    bool m_ink;
};

class ResampledRows final : public LazyRows
{
public:
    ResampledRows(std::unique_ptr<RowProviderInterface> source, const Size& size)
        : LazyRows(size, source->dataModel()), m_source(std::move(source))
    {}

protected:
    std::shared_ptr<const imaging::Bitmap> make() override
    {
        try {
            return std::make_shared<imaging::Bitmap>(
                imaging::resample(*m_source->rows(), {size().width, size().height}));
        } catch (const imaging::ImagingError& failure) {
            throw ATILException(failure.what());
        }
    }

private:
    std::unique_ptr<RowProviderInterface> m_source;
};

} // namespace

std::unique_ptr<RowProviderInterface> makeRows(std::shared_ptr<const imaging::Bitmap> source, const imaging::Rect& part,
                                               int rotation, const DataModel& dataModel)
{
    if (!known(rotation))
        return nullptr;
    return std::make_unique<ImageRows>(std::move(source), part, rotation, dataModel);
}

std::unique_ptr<RowProviderInterface> makeOneValueRows(const Size& size, bool ink, const DataModel& dataModel)
{
    return std::make_unique<OneValueRows>(size, ink, dataModel);
}

RowProviderInterface* newResampleFilter(RowProviderInterface* rows, const Size& size, int, int, int, int, int)
{
    std::unique_ptr<RowProviderInterface> source(rows);
    if (!source || size.width <= 0 || size.height <= 0)
        throw ATILException("An image cannot be resampled to a size without pixels.");
    return new ResampledRows(std::move(source), size);
}

} // namespace Atil
