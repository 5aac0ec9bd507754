#pragma once

#include <vector>

#include "platform/platform.h"

/// The definitions of a drawing that show a file which is about to be written anew: the host lets go of it, and loads
/// what has come, or what is still there, at the end.
class CShownFile
{
public:
    /// Leaves the definition `own` out, which the caller has open; it may be null.
    CShownFile(AcDbDatabase* database, const CString& path, const AcDbObjectId& own = AcDbObjectId());
    ~CShownFile();
    CShownFile(const CShownFile&) = delete;
    CShownFile& operator=(const CShownFile&) = delete;

    /// Somebody edited one of them and the file does not have it yet. Then all keep their images, and the file is to be
    /// left alone.
    bool IsEdited() const { return m_bEdited; }

private:
    void FindIn(AcDbDatabase* database, const CString& path, const AcDbObjectId& own);

    std::vector<AcDbObjectId> m_definitions; // those whose image was loaded
    bool m_bEdited = false;
};
