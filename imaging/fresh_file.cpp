#include "imaging/fresh_file.h"

#include "imaging/error.h"

#include <algorithm>
#include <cerrno>
#include <random>
#include <system_error>
#include <utility>

namespace imaging {

namespace {

namespace fs = std::filesystem;

/// A name in the target's folder that no file has.
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

/// The end of a sentence about what a stream could not do. Streams keep no reason of their own: errno is zeroed before.
std::string systemReason()
{
    return errno == 0 ? "." : ": " + std::generic_category().message(errno) + ".";
}

} // namespace

FreshFile::FreshFile(fs::path target) : target_(std::move(target))
{
    refuseProtectedTarget(target_);
    fresh_ = unusedNameBeside(target_);
    errno = 0;
    stream_.open(fresh_, std::ios::binary | std::ios::trunc);
    if (!stream_)
        throw ImagingError("The file can't be written" + systemReason());
}

FreshFile::~FreshFile()
{
    if (committed_)
        return;
    stream_.close();
    std::error_code ignored; // a destructor has no one to tell
    fs::remove(fresh_, ignored);
}

void FreshFile::write(std::uint64_t offset, const void* bytes, std::size_t count)
{
    errno = 0; // a seek may have bytes to write out, too
    if (offset != position_)
        stream_.seekp(std::streamoff(offset));
    stream_.write(static_cast<const char*>(bytes), std::streamsize(count));
    if (!stream_)
        throw ImagingError("Writing the file failed" + systemReason());
    position_ = offset + count;
    size_ = std::max(size_, position_);
}

void FreshFile::commit()
{
    errno = 0;
    stream_.close();
    if (!stream_)
        throw ImagingError("Writing the file failed" + systemReason());
    std::error_code error;
    fs::rename(fresh_, target_, error);
    if (error)
        throw ImagingError("The file can't be replaced: " + error.message() + ".");
    committed_ = true;
}

} // namespace imaging
