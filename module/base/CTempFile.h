#pragma once

#include "platform/platform.h"

/// A free name in the temporary folder. No file stands under it at first; whatever does at the end is deleted.
class CTempFile
{
public:
    /// `extension` comes with its dot, or is empty; three characters of `prefix` count.
    explicit CTempFile(const CString& extension = L"", const CString& prefix = L"HV");
    virtual ~CTempFile();
    CTempFile(const CTempFile&) = delete;
    CTempFile& operator=(const CTempFile&) = delete;

    CString m_strPath;
    int m_nKeep = 0; // non-zero leaves the file there at the end
};
