#pragma once

#include "platform/platform.h"

/// Why a file is not free to be replaced, or that it is.
enum class FileRelease
{
    Freed,          // it is out of the way, or was not there
    Held,           // somebody has it open; later it may go
    WriteProtected, // it is marked so, or its folder lets nothing be moved
};

/// A file that is about to be replaced, renamed within its own folder instead of deleted. Unless its successor has
/// come, it comes back under its name at the end, over whatever stands in its place; where there was none, none is
/// left. If it can't come back, the command line says where it lies.
class CSetAsideFile
{
public:
    CSetAsideFile() = default;
    ~CSetAsideFile();
    CSetAsideFile(const CSetAsideFile&) = delete;
    CSetAsideFile& operator=(const CSetAsideFile&) = delete;

    /// Renaming fails in the same cases as deleting would, but for the mark of write protection, which is looked at
    /// first. With any result but Freed the file is where it was.
    FileRelease SetAside(const CString& path);
    /// The successor is in place: the old file goes.
    void Remove();

private:
    void PutBack();

    CString m_strPath;  // empty if there is nothing to put back
    CString m_strAside; // empty if there was no file
};

/// A free name in the folder of the file; short, so that it does not become too long where the file's own is just short
/// enough.
CString FreeNameBeside(const CString& path);

/// Whether the file, if there is one, is marked as not to be written.
bool IsMarkedReadOnly(const CString& path);

/// Whether both names lead to one file, however they are spelled. Names of files that are not there are compared as
/// full paths, without regard to case.
bool IsSameFile(const CString& one, const CString& other);
