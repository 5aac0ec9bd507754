#include "module/base/CTempFile.h"

#include "module/base/CArxApp.h"

CTempFile::CTempFile(const CString& extension, const CString& prefix)
{
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    do {
        wchar_t path[MAX_PATH] = {};
        // Number 0 has Windows make an empty file, so that the name is free; the worker and the host want none there.
        GetTempFileNameW(folder, prefix, 0, path);
        DeleteFileW(path);
        m_strPath = path + extension;
        // What stands under the reserved name is deleted at the stop, and some files have to outlast it.
    } while (!m_strPath.IsEmpty() && g_pArxApp && m_strPath == g_pArxApp->m_strTempFile);
    DeleteFileW(m_strPath);
}

CTempFile::~CTempFile()
{
    if (m_nKeep == 0)
        DeleteFileW(m_strPath);
}
