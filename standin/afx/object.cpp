#include <cstdio>

#include "standin/afx/afx_object.h"
#include "standin/afx/afx_string.h"

CObject* CRuntimeClass::CreateObject()
{
    return m_pfnCreateObject ? m_pfnCreateObject() : nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const
{
    for (const CRuntimeClass* type = this; type; type = type->m_pfnGetBaseClass ? type->m_pfnGetBaseClass() : nullptr) {
        if (type == pBaseClass)
            return TRUE;
    }
    return FALSE;
}

CRuntimeClass* CObject::GetThisClass()
{
    static CRuntimeClass description = {"CObject", static_cast<int>(sizeof(CObject)), 0xFFFF, nullptr, nullptr};
    return &description;
}

CRuntimeClass* CObject::GetRuntimeClass() const
{
    return GetThisClass();
}

CObject::~CObject() = default;

void CObject::Serialize(CArchive&) {}

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext& dc) const
{
    dc << "a " << GetRuntimeClass()->m_lpszClassName << " at " << static_cast<const void*>(this) << "\n";
}

BOOL CObject::IsSerializable() const
{
    return GetRuntimeClass()->m_wSchema != 0xFFFF;
}

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const
{
    return GetRuntimeClass()->IsDerivedFrom(pClass);
}

CObject* AfxDynamicDownCast(CRuntimeClass* pClass, CObject* pObject)
{
    return pObject && pObject->IsKindOf(pClass) ? pObject : nullptr;
}

CDumpContext afxDump;

CDumpContext& CDumpContext::operator<<(LPCWSTR text)
{
    OutputDebugStringW(text ? text : L"(null)");
    return *this;
}

CDumpContext& CDumpContext::operator<<(LPCSTR text)
{
    OutputDebugStringA(text ? text : "(null)");
    return *this;
}

CDumpContext& CDumpContext::operator<<(int number)
{
    return *this << std::to_string(number).c_str();
}

CDumpContext& CDumpContext::operator<<(UINT number)
{
    return *this << std::to_string(number).c_str();
}

CDumpContext& CDumpContext::operator<<(double number)
{
    return *this << std::to_string(number).c_str();
}

CDumpContext& CDumpContext::operator<<(const void* pointer)
{
    char text[32];
    std::snprintf(text, sizeof text, "%p", pointer);
    return *this << text;
}

CDumpContext& CDumpContext::operator<<(const CObject* object)
{
    if (object) {
        object->Dump(*this);
    } else {
        *this << "(null)";
    }
    return *this;
}
