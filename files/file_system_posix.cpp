#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "files/file_system.h"

namespace files {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void failed()
{
    throw std::system_error(errno, std::generic_category());
}

// Whether the name still leads to the open file: another process may have taken the name away.
bool leadsTo(const fs::path& path, int descriptor)
{
    struct stat named = {};
    struct stat open = {};
    return lstat(path.c_str(), &named) == 0 && fstat(descriptor, &open) == 0 && named.st_dev == open.st_dev &&
           named.st_ino == open.st_ino;
}

} // namespace

PathKind kindOf(const fs::path& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status))
        return PathKind::nothing;
    if (!fs::is_regular_file(status))
        return PathKind::other;
    const bool writable = (status.permissions() & fs::perms::owner_write) != fs::perms::none;
    return writable ? PathKind::file : PathKind::protectedFile;
}

fs::path ofAnyLength(const fs::path& path)
{
    return path;
}

// Held by a lock, which ends with the process.
HeldFile::HeldFile(const fs::path& path) : m_path(path)
{
    constexpr mode_t everyone = 0666; // less what the user's mask takes away
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, everyone);
    if (descriptor < 0)
        failed();
    // A file system without locks has nobody who could take one either.
    const bool taken = flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (taken || !leadsTo(path, descriptor)) {
        // Between its making and the lock another process took it for abandoned.
        close(descriptor);
        errno = EEXIST;
        failed();
    }
    m_handle = descriptor;
}

HeldFile::~HeldFile()
{
    if (!m_renamed)
        unlink(m_path.c_str());
    close(int(m_handle));
}

void HeldFile::write(std::uint64_t offset, const char* bytes, std::size_t count)
{
    while (count > 0) {
        const ssize_t written = pwrite(int(m_handle), bytes, count, off_t(offset));
        if (written < 0 && errno != EINTR)
            failed();
        if (written > 0) {
            bytes += written;
            count -= std::size_t(written);
            offset += std::uint64_t(written);
        }
    }
}

void HeldFile::renameOver(const fs::path& target)
{
    if (rename(m_path.c_str(), target.c_str()) != 0)
        failed();
    m_renamed = true;
}

std::vector<fs::path> namesIn(const fs::path& folder, std::string_view begin, std::string_view end)
{
    std::vector<fs::path> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder.empty() ? "." : folder, error), last; !error && entry != last;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with(begin) && name.ends_with(end))
            names.emplace_back(name);
    }
    return names;
}

void removeAbandoned(const fs::path& path) noexcept
{
    const int descriptor = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return;
    struct stat status = {};
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && flock(descriptor, LOCK_EX | LOCK_NB) == 0 &&
        leadsTo(path, descriptor))
        unlink(path.c_str());
    close(descriptor);
}

} // namespace files
