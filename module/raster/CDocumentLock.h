#pragma once

#include "platform/platform.h"

/// Holds a document, if there is one, locked for write, for code that the host did not enter by a command.
class CDocumentLock
{
public:
    /// The current one.
    CDocumentLock();
    /// The one that the object lies in, which need not be the current one; of an object that lies in none, the current
    /// one.
    explicit CDocumentLock(AcDbObjectId object);
    virtual ~CDocumentLock();
    CDocumentLock(const CDocumentLock&) = delete;
    CDocumentLock& operator=(const CDocumentLock&) = delete;

    /// Leaves the document locked for good.
    void Abandon() { m_pDocument = nullptr; }

private:
    explicit CDocumentLock(AcApDocument* document);

    AcApDocument* m_pDocument;
};
