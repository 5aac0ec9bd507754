// Files and folders of the tests' own.
#pragma once

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <csignal>
#include <unistd.h>
#endif

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// Where the temporary folders of this test program lie. It goes when the program ends; what a program that was killed
/// or broke off has left goes when the next one begins.
class TemporaryRoot
{
public:
    static const std::filesystem::path& path()
    {
        static const TemporaryRoot root;
        return root.m_path;
    }

    /// A folder or file with all that is in it, also what is write-protected or has a long path.
    static void removeAll(const std::filesystem::path& path)
    {
#ifdef _WIN32
        const std::wstring name = path.native().starts_with(L"\\\\?\\") ? path.native() : L"\\\\?\\" + path.native();
        const DWORD attributes = GetFileAttributesW(name.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES)
            return;
        SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_NORMAL);
        if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            DeleteFileW(name.c_str());
            return;
        }
        WIN32_FIND_DATAW entry = {};
        const HANDLE search = FindFirstFileW((name + L"\\*").c_str(), &entry);
        for (bool more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &entry)) {
            const std::wstring inside = entry.cFileName;
            if (inside != L"." && inside != L"..")
                removeAll(name + L'\\' + inside);
        }
        FindClose(search);
        RemoveDirectoryW(name.c_str());
#else
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
#endif
    }

private:
#ifdef _WIN32
    static unsigned long ownProcess()
    {
        return GetCurrentProcessId();
    }
    static bool lives(unsigned long id)
    {
        const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, id);
        const bool alive = process != nullptr && WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
        CloseHandle(process);
        return alive;
    }
#else
    static unsigned long ownProcess()
    {
        return static_cast<unsigned long>(getpid());
    }
    static bool lives(unsigned long id)
    {
        return kill(static_cast<pid_t>(id), 0) == 0 || errno != ESRCH;
    }
#endif

    TemporaryRoot()
    {
        const std::filesystem::path all = std::filesystem::temp_directory_path() / "halvoran-tests";
        m_path = all / std::to_string(ownProcess());
        std::error_code ignored;
        for (const auto& entry : std::filesystem::directory_iterator(all, ignored)) {
            const unsigned long process = std::strtoul(entry.path().filename().string().c_str(), nullptr, 10);
            if (process == ownProcess() || !lives(process))
                removeAll(entry.path());
        }
        // A program that ends may take the common folder away between the two steps of making both.
        for (int attempt = 0; attempt < 100 && !std::filesystem::is_directory(m_path); ++attempt)
            std::filesystem::create_directories(m_path, ignored);
    }
    ~TemporaryRoot()
    {
        std::error_code ignored;
        removeAll(m_path);
        std::filesystem::remove(m_path.parent_path(), ignored); // unless others still use it
    }

    std::filesystem::path m_path;
};

/// A folder that goes with all that is in it.
class TemporaryFolder
{
public:
    explicit TemporaryFolder(const std::filesystem::path& name = "folder")
    {
        static int count = 0;
        do {
            m_path = TemporaryRoot::path() / name;
            m_path += std::to_string(++count);
        } while (!std::filesystem::create_directory(m_path));
    }
    ~TemporaryFolder() { TemporaryRoot::removeAll(m_path); }
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
