#include "imaging/fresh_file.h"

#include <algorithm>
#include <cerrno>
#include <random>
#include <system_error>
#include <utility>

#include "imaging/error.h"

namespace imaging {

namespace {

namespace fs = std::filesystem;

// A name in the target's folder that no file has.
fs::path unusedNameBeside(const fs::path& target)
{
    std::random_device random;
    for (;;) {
        fs::path name = target;
        name += std::to_string(random()).append(".new");
        std::error_code error;
        if (fs::symlink_status(name, error).type() == fs::file_type::not_found || error)
            return name;
    }
}

void refuseProtectedTarget(const fs::path& target)
{
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (!fs::exists(status))
        return;
    if (!fs::is_regular_file(status))
        throw ImagingError("This is not a file that can be written.");
    // Renaming over a write-protected file succeeds on some systems; the user's protection holds on all.
    if ((status.permissions() & fs::perms::owner_write) == fs::perms::none)
        throw ImagingError("The file is write-protected.");
}

// The end of a sentence about what a stream could not do. Streams keep no reason of their own: errno is zeroed before.
std::string systemReason()
{
    return errno == 0 ? "." : ": " + std::generic_category().message(errno) + ".";
}

} // namespace

FreshFile::FreshFile(fs::path target) : m_target(std::move(target))
{
    refuseProtectedTarget(m_target);
    m_fresh = unusedNameBeside(m_target);
    errno = 0;
    m_stream.open(m_fresh, std::ios::binary | std::ios::trunc);
    if (!m_stream)
        throw ImagingError("The file can't be written" + systemReason());
}

FreshFile::~FreshFile()
{
    if (m_committed)
        return;
    m_stream.close();
    std::error_code ignored; // a destructor has no one to tell
    fs::remove(m_fresh, ignored);
}

void FreshFile::write(std::uint64_t offset, const void* bytes, std::size_t count)
{
    errno = 0; // a seek may have bytes to write out, too
    if (offset != m_position)
        m_stream.seekp(std::streamoff(offset));
    m_stream.write(static_cast<const char*>(bytes), std::streamsize(count));
    if (!m_stream)
        throw ImagingError("Writing the file failed" + systemReason());
    m_position = offset + count;
    m_size = std::max(m_size, m_position);
}

void FreshFile::commit()
{
    errno = 0;
    m_stream.close();
    if (!m_stream)
        throw ImagingError("Writing the file failed" + systemReason());
    std::error_code error;
    fs::rename(m_fresh, m_target, error);
    if (error)
        throw ImagingError("The file can't be replaced: " + error.message() + ".");
    m_committed = true;
}

} // namespace imaging
