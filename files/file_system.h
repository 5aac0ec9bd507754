#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// What files need of the system beyond the standard library. Paths may be of any length that the system's
// file names can have. Errors are thrown as std::system_error, with the system's reason.

namespace files {

enum class PathKind
{
    nothing,
    file,
    protectedFile, // one that may not be written to
    other,         // a folder, a device
};

PathKind kindOf(const std::filesystem::path& path);

/// The path in the form in which the system does not limit its length.
std::filesystem::path ofAnyLength(const std::filesystem::path& path);

/// A new file that belongs to this process as long as it is open: removeAbandoned() of any process, on any machine,
/// leaves it alone. When the process ends in whatever way, the file stays and is abandoned.
class HeldFile
{
public:
    /// Throws when there is already something of this name.
    explicit HeldFile(const std::filesystem::path& path);
    /// Removes the file unless it was renamed.
    ~HeldFile();
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    void write(std::uint64_t offset, const char* bytes, std::size_t count);

    /// Puts the file in the target's place, whether there is a target or not, and lets it go.
    void renameOver(const std::filesystem::path& target);

private:
    std::filesystem::path m_path;
    std::intptr_t m_handle; // the system's
    bool m_renamed = false;
};

/// The names of the folder's entries that begin and end so; empty when the folder can't be read.
std::vector<std::filesystem::path> namesIn(const std::filesystem::path& folder, std::string_view begin,
                                           std::string_view end);

/// Removes a file that no process holds. What can't be removed stays.
void removeAbandoned(const std::filesystem::path& path) noexcept;

} // namespace files
