// Files and folders of the tests' own.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

/// A folder that goes with all that is in it.
class TemporaryFolder
{
public:
    explicit TemporaryFolder(const std::filesystem::path& name = "halvoran-test-")
    {
        std::random_device random;
        do {
            m_path = std::filesystem::temp_directory_path() / name;
            m_path += std::to_string(random());
        } while (!std::filesystem::create_directory(m_path));
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return m_path / name; }
    /// The files in it, by their names.
    std::vector<std::filesystem::path> names() const
    {
        std::vector<std::filesystem::path> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::filesystem::path m_path;
};

template <class Bytes = std::string> Bytes contentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}
