#pragma once

#include "platform/platform.h"

/// Holds the current document, if there is one, locked for write, for code that the host did not enter by a command.
class CDocumentLock
{
public:
    CDocumentLock();
    virtual ~CDocumentLock();
    CDocumentLock(const CDocumentLock&) = delete;
    CDocumentLock& operator=(const CDocumentLock&) = delete;

    /// Leaves the document locked for good.
    void Abandon() { m_pDocument = nullptr; }

private:
    AcApDocument* m_pDocument;
};
