#include "imaging/byte_stream.h"

#include "imaging/error.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace imaging {

void ByteSource::readExactly(std::uint64_t offset, void* target, std::size_t count)
{
    if (read(offset, target, count) != count)
        throw ImagingError("The file ends too early.");
}

FileSource::FileSource(const std::filesystem::path& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status))
        throw ImagingError("There is no such file.");
    if (!std::filesystem::is_regular_file(status))
        throw ImagingError("This is not a file.");
    size_ = std::filesystem::file_size(path, error);
    if (error)
        throw ImagingError("The file can't be opened: " + error.message() + ".");
    errno = 0;
    stream_.open(path, std::ios::binary);
    if (!stream_)
        throw ImagingError("The file can't be opened: " + std::generic_category().message(errno) + ".");
}

std::size_t FileSource::read(std::uint64_t offset, void* target, std::size_t count)
{
    if (offset >= size_ || count == 0)
        return 0;
    // A seek throws away what the stream has buffered: only when it leads elsewhere.
    if (offset != position_)
        stream_.seekg(std::streamoff(offset));
    stream_.read(static_cast<char*>(target), std::streamsize(std::min<std::uint64_t>(count, size_ - offset)));
    const auto got = std::size_t(stream_.gcount());
    if (stream_.bad())
        throw ImagingError("Reading the file failed.");
    stream_.clear();
    position_ = offset + got;
    return got;
}

std::size_t MemorySource::read(std::uint64_t offset, void* target, std::size_t count)
{
    if (offset >= bytes_.size() || count == 0)
        return 0;
    const auto got = std::size_t(std::min<std::uint64_t>(count, bytes_.size() - offset));
    std::memcpy(target, bytes_.data() + offset, got);
    return got;
}

void MemorySink::write(std::uint64_t offset, const void* bytes, std::size_t count)
{
    if (offset + count > bytes_.size())
        bytes_.resize(offset + count);
    if (count > 0)
        std::memcpy(bytes_.data() + offset, bytes, count);
}

} // namespace imaging
