// Writing an image into a file.
#pragma once

#include <memory>

#include "standin/atil/file_specifier.h"
#include "standin/atil/format_codec.h"
#include "standin/atil/row_provider.h"

namespace Atil {
/// Stands on a codec that must outlive it. The order of use: setFileSpecifier, createImageFrame, the properties,
/// writeImageFrame, which writes the whole file.
class HALVORAN_STANDIN_API FileWriteDescriptor
{
public:
    explicit FileWriteDescriptor(ImageFormatCodec* codec);
    ~FileWriteDescriptor();
    FileWriteDescriptor(const FileWriteDescriptor&) = delete;
    FileWriteDescriptor& operator=(const FileWriteDescriptor&) = delete;

    /// False if the name is empty, a file of the name is there already, or its folder is not.
    bool setFileSpecifier(const FileSpecifier& specifier);
    /// One frame of that model and size; false for anything but 1-bit.
    bool createImageFrame(const DataModel& dataModel, const Size& size);
    /// As in ImageFormatCodec::newProperty, with what was set before.
    FormatCodecPropertyInterface* getProperty(FormatCodecPropertyInterface::PropertyType type) const;
    /// The property stays the caller's.
    bool setProperty(const FormatCodecPropertyInterface* property);
    /// False if the frame was not created, the rows are of another size, or the file could not be written; then there
    /// is no file.
    bool writeImageFrame(RowProviderInterface* rows);

private:
    struct State;
    std::unique_ptr<State> m_state;
};
} // namespace Atil
