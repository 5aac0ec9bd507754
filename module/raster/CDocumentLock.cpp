#include "module/raster/CDocumentLock.h"

namespace {

AcApDocument* DocumentOf(AcDbObjectId object)
{
    AcApDocument* document = object.isNull() ? nullptr : acDocManagerPtr()->document(object.database());
    return document ? document : acDocManagerPtr()->curDocument();
}

} // namespace

CDocumentLock::CDocumentLock() : CDocumentLock(acDocManagerPtr()->curDocument()) {}

CDocumentLock::CDocumentLock(AcDbObjectId object) : CDocumentLock(DocumentOf(object)) {}

CDocumentLock::CDocumentLock(AcApDocument* document) : m_pDocument(document)
{
    if (m_pDocument && acDocManagerPtr()->lockDocument(m_pDocument, AcAp::kWrite, nullptr, nullptr, true) != Acad::eOk)
        m_pDocument = nullptr;
}

CDocumentLock::~CDocumentLock()
{
    if (m_pDocument)
        acDocManagerPtr()->unlockDocument(m_pDocument);
}
