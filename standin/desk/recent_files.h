#pragma once

#include <filesystem>
#include <vector>

namespace desk {

/// The drawings that were opened or saved last, the latest first: of each path one, whatever the case it was given in.
class RecentFiles
{
public:
    static constexpr std::size_t most = 9;

    const std::vector<std::filesystem::path>& files() const { return m_files; }
    /// Becomes the latest. A relative path is taken from the present folder.
    void add(const std::filesystem::path& file);
    void remove(const std::filesystem::path& file);

    /// In the program's settings. What they hold beyond the most is left out.
    void load();
    void save() const;

private:
    std::vector<std::filesystem::path> m_files;
};

} // namespace desk
