#include "standin/atil/file_write_descriptor.h"

#include <filesystem>
#include <optional>

#include "imaging/error.h"
#include "imaging/raster_file.h"
#include "standin/atil/tiff_codec.h"

namespace Atil {

struct FileWriteDescriptor::State
{
    ImageFormatCodec* codec = nullptr;
    std::filesystem::path path;
    std::optional<Size> frame;
    TiffCompression compression;
    FormatCodecDensity density;
};

FileWriteDescriptor::FileWriteDescriptor(ImageFormatCodec* codec) : m_state(std::make_unique<State>())
{
    m_state->codec = codec;
}

FileWriteDescriptor::~FileWriteDescriptor() = default;

bool FileWriteDescriptor::setFileSpecifier(const FileSpecifier& specifier)
{
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(specifier.path(), error);
    if (specifier.path().empty() || std::filesystem::exists(path, error) ||
        !std::filesystem::is_directory(path.parent_path(), error))
        return false;
    m_state->path = path;
    return true;
}

bool FileWriteDescriptor::createImageFrame(const DataModel& dataModel, const Size& size)
{
    if (m_state->path.empty() || dataModel.bitsPerPixel() != 1 || size.width <= 0 || size.height <= 0)
        return false;
    m_state->frame = size;
    return true;
}

FormatCodecPropertyInterface* FileWriteDescriptor::getProperty(FormatCodecPropertyInterface::PropertyType type) const
{
    FormatCodecPropertyInterface* property = m_state->codec ? m_state->codec->newProperty(type) : nullptr;
    if (auto* compression = dynamic_cast<TiffCompression*>(property))
        *compression = m_state->compression;
    if (auto* density = dynamic_cast<FormatCodecDensity*>(property))
        *density = m_state->density;
    return property;
}

bool FileWriteDescriptor::setProperty(const FormatCodecPropertyInterface* property)
{
    if (const auto* compression = dynamic_cast<const TiffCompression*>(property)) {
        m_state->compression = *compression;
    } else if (const auto* density = dynamic_cast<const FormatCodecDensity*>(property)) {
        m_state->density = *density;
    } else {
        return false;
    }
    return true;
}

bool FileWriteDescriptor::writeImageFrame(RowProviderInterface* rows)
{
    if (!rows || !m_state->frame || !(rows->size() == *m_state->frame))
        return false;
    const bool packed = m_state->compression.compression() == TiffCompressionType::kCCITT_FAX4;
    const imaging::Format format = packed ? imaging::Format::TiffGroup4 : imaging::Format::TiffUncompressed;
    try {
        imaging::writeRaster(m_state->path, *rows->rows(), {m_state->density.xDensity(), m_state->density.yDensity()},
                             format);
    } catch (const imaging::ImagingError&) {
        return false;
    }
    return true;
}

} // namespace Atil
