#include "imaging/byte_stream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "files/file_system.h"
#include "imaging/error.h"

namespace imaging {

void ByteSource::readExactly(std::uint64_t offset, void* target, std::size_t count)
{
    if (read(offset, target, count) != count)
        throw ImagingError("The file ends too early.");
}

FileSource::FileSource(const std::filesystem::path& path)
{
    const files::PathKind kind = files::kindOf(path);
    if (kind == files::PathKind::nothing)
        throw ImagingError("There is no such file.");
    if (kind == files::PathKind::other)
        throw ImagingError("This is not a file.");
    errno = 0;
    m_stream.open(files::ofAnyLength(path), std::ios::binary | std::ios::ate);
    const std::streamoff size = m_stream ? std::streamoff(m_stream.tellg()) : -1;
    if (size < 0)
        throw ImagingError("The file can't be opened: " + std::generic_category().message(errno) + ".");
    m_size = m_position = std::uint64_t(size);
}

std::size_t FileSource::read(std::uint64_t offset, void* target, std::size_t count)
{
    if (offset >= m_size || count == 0)
        return 0;
    // A seek throws away what the stream has buffered: only when it leads elsewhere.
    if (offset != m_position)
        m_stream.seekg(std::streamoff(offset));
    m_stream.read(static_cast<char*>(target), std::streamsize(std::min<std::uint64_t>(count, m_size - offset)));
    const auto got = std::size_t(m_stream.gcount());
    if (m_stream.bad())
        throw ImagingError("Reading the file failed.");
    m_stream.clear();
    m_position = offset + got;
    return got;
}

std::size_t MemorySource::read(std::uint64_t offset, void* target, std::size_t count)
{
    if (offset >= m_bytes.size() || count == 0)
        return 0;
    const auto got = std::size_t(std::min<std::uint64_t>(count, m_bytes.size() - offset));
    std::memcpy(target, m_bytes.data() + offset, got);
    return got;
}

void MemorySink::write(std::uint64_t offset, const void* bytes, std::size_t count)
{
    if (offset + count > m_bytes.size())
        m_bytes.resize(offset + count);
    if (count > 0)
        std::memcpy(m_bytes.data() + offset, bytes, count);
}

} // namespace imaging
