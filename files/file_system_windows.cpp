#include <windows.h>
#include <algorithm>
#include <cstring>
#include <system_error>

#include "files/file_system.h"

namespace files {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void failed()
{
    throw std::system_error(int(GetLastError()), std::system_category());
}

HANDLE handleOf(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

std::wstring wide(std::string_view ascii)
{
    return {ascii.begin(), ascii.end()};
}

// Takes the name from an open file that was opened for deletion; the file itself goes when it is closed.
void removeOpen(HANDLE file)
{
    FILE_DISPOSITION_INFO disposition = {};
    disposition.DeleteFile = TRUE;
    SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof(disposition));
}

} // namespace

PathKind kindOf(const fs::path& path)
{
    const DWORD attributes = GetFileAttributesW(ofAnyLength(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return PathKind::nothing;
    if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) != 0)
        return PathKind::other;
    return (attributes & FILE_ATTRIBUTE_READONLY) != 0 ? PathKind::protectedFile : PathKind::file;
}

// The system takes a path of more than 259 characters only when it is absolute and says by its beginning that there is
// nothing in it to be worked out.
fs::path ofAnyLength(const fs::path& path)
{
    const std::wstring& given = path.native();
    if (given.empty() || given.starts_with(L"\\\\?\\") || given.starts_with(L"\\\\.\\"))
        return path;
    std::wstring full(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetFullPathNameW(given.c_str(), DWORD(full.size()), full.data(), nullptr);
        if (length == 0)
            return path;
        const bool complete = length < full.size();
        full.resize(length);
        if (complete)
            break;
    }
    if (full.starts_with(L"\\\\.\\")) // a device, such as NUL
        return full;
    if (full.starts_with(L"\\\\"))
        return L"\\\\?\\UNC" + full.substr(1);
    return L"\\\\?\\" + full;
}

// Held by being open: a file that its opener does not share for deletion can't be deleted.
HeldFile::HeldFile(const fs::path& path) : m_path(ofAnyLength(path))
{
    const HANDLE file = CreateFileW(m_path.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        failed();
    m_handle = reinterpret_cast<std::intptr_t>(file);
}

HeldFile::~HeldFile()
{
    if (!m_renamed)
        removeOpen(handleOf(m_handle));
    CloseHandle(handleOf(m_handle));
}

void HeldFile::write(std::uint64_t offset, const char* bytes, std::size_t count)
{
    constexpr std::size_t largestPiece = std::size_t(1) << 26;
    while (count > 0) {
        OVERLAPPED place = {};
        place.Offset = DWORD(offset);
        place.OffsetHigh = DWORD(offset >> 32);
        DWORD written = 0;
        if (!WriteFile(handleOf(m_handle), bytes, DWORD(std::min(count, largestPiece)), &written, &place))
            failed();
        bytes += written;
        count -= written;
        offset += written;
    }
}

// By its handle, so that there is no moment in which the complete file is not held.
void HeldFile::renameOver(const fs::path& target)
{
    const std::wstring name = ofAnyLength(target).native();
    const std::size_t nameBytes = name.size() * sizeof(wchar_t);
    std::vector<std::byte> block(sizeof(FILE_RENAME_INFO) + nameBytes);
    auto* rename = reinterpret_cast<FILE_RENAME_INFO*>(block.data());
    rename->ReplaceIfExists = TRUE;
    rename->FileNameLength = DWORD(nameBytes);
    std::memcpy(rename->FileName, name.data(), nameBytes);
    if (!SetFileInformationByHandle(handleOf(m_handle), FileRenameInfo, rename, DWORD(block.size())))
        failed();
    m_renamed = true;
}

std::vector<fs::path> namesIn(const fs::path& folder, std::string_view begin, std::string_view end)
{
    std::vector<fs::path> names;
    const fs::path pattern = ofAnyLength((folder.empty() ? fs::path(L".") : folder) / (wide(begin) + L"*" + wide(end)));
    WIN32_FIND_DATAW entry = {};
    const HANDLE search = FindFirstFileW(pattern.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    do {
        // The pattern is also held against names in the short form that the system makes up.
        const std::wstring_view name = entry.cFileName;
        if (name.starts_with(wide(begin)) && name.ends_with(wide(end)))
            names.emplace_back(name);
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    return names;
}

void removeAbandoned(const fs::path& path) noexcept
{
    try {
        DeleteFileW(ofAnyLength(path).c_str());
    } catch (const std::bad_alloc&) { // it stays for the next time
    }
}

} // namespace files
