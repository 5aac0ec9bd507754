#pragma once

/// A path and its parts. Of a UNC path the drive is "\\server\share\". A path of 260 characters or more is cut off.
class CPathSplit
{
public:
    static constexpr int partLength = 260;

    explicit CPathSplit(const wchar_t* path);

    /// Name with extension, and drive with directory.
    const wchar_t* NameExt() const { return m_nameExt; }
    const wchar_t* Folder() const { return m_folder; }

    wchar_t m_drive[partLength] = {};
    wchar_t m_directory[partLength] = {}; // with its last backslash
    wchar_t m_name[partLength] = {};
    wchar_t m_extension[partLength] = {}; // with its dot
    wchar_t m_nameExt[partLength] = {};
    wchar_t m_folder[partLength] = {};
    wchar_t m_path[partLength] = {};
};
