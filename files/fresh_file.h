#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "files/file_error.h"
#include "files/file_system.h"

namespace files {

/// A file that takes its target's place only when it is complete: written beside the target under a name of its own,
/// whose length does not depend on the target's, and renamed over it. Without commit(), whatever was written is removed
/// and the target stays as it was. What a process that was killed left beside some target goes when the next fresh file
/// is made in that folder.
class FreshFile
{
public:
    /// Throws FileError when the target is write-protected or its folder takes no new file.
    explicit FreshFile(std::filesystem::path target);

    std::uint64_t size() const { return m_size; }
    /// At an offset not beyond size(). Throws FileError when the disk fails or is full.
    void write(std::uint64_t offset, const void* bytes, std::size_t count);

    /// Throws FileError when the last bytes can't be written or the target can't be replaced.
    void commit();

private:
    void flush();

    std::filesystem::path m_target;
    std::optional<HeldFile> m_file;
    std::vector<char> m_waiting; // bytes that go to the file together
    std::uint64_t m_waitingAt = 0;
    std::uint64_t m_size = 0;
};

} // namespace files
