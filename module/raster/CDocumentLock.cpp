#include "module/raster/CDocumentLock.h"

CDocumentLock::CDocumentLock() : m_pDocument(acDocManagerPtr()->curDocument())
{
    if (m_pDocument && acDocManagerPtr()->lockDocument(m_pDocument, AcAp::kWrite, nullptr, nullptr, true) != Acad::eOk)
        m_pDocument = nullptr;
}

CDocumentLock::~CDocumentLock()
{
    if (m_pDocument)
        acDocManagerPtr()->unlockDocument(m_pDocument);
}
