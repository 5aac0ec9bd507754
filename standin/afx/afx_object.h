// CObject, the root of the class library, and its run-time class information.
#pragma once

#include "standin/afx/afx_base.h"

class CArchive;
class CDumpContext;
class CObject;

/// One per class, with static lifetime. `m_lpszClassName` is narrow text, as in the public layout.
struct HALVORAN_STANDIN_API CRuntimeClass
{
    LPCSTR m_lpszClassName;
    int m_nObjectSize;
    UINT m_wSchema;
    CObject* (*m_pfnCreateObject)();
    CRuntimeClass* (*m_pfnGetBaseClass)();

    /// A new object on the heap, owned by the caller; null for a class without dynamic creation.
    CObject* CreateObject();
    BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;
};

class HALVORAN_STANDIN_API CObject
{
public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject();
    virtual void Serialize(CArchive& ar);
    virtual void AssertValid() const;
    virtual void Dump(CDumpContext& dc) const;

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    BOOL IsSerializable() const;
    BOOL IsKindOf(const CRuntimeClass* pClass) const;
    static CRuntimeClass* GetThisClass();

protected:
    CObject() = default;
};

/// Text sink of CObject::Dump: the debugger's output.
class HALVORAN_STANDIN_API CDumpContext
{
public:
    CDumpContext& operator<<(LPCWSTR text);
    CDumpContext& operator<<(LPCSTR text);
    CDumpContext& operator<<(int number);
    CDumpContext& operator<<(UINT number);
    CDumpContext& operator<<(double number);
    CDumpContext& operator<<(const void* pointer);
    CDumpContext& operator<<(const CObject* object);
    int GetDepth() const { return m_nDepth; }
    void SetDepth(int nNewDepth) { m_nDepth = nNewDepth; }

private:
    int m_nDepth = 0;
};

HALVORAN_STANDIN_API extern CDumpContext afxDump;

/// Null stays null; an object of another class becomes null.
HALVORAN_STANDIN_API CObject* AfxDynamicDownCast(CRuntimeClass* pClass, CObject* pObject);

#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())
#define DYNAMIC_DOWNCAST(class_name, object)                                                                           \
    static_cast<class_name*>(AfxDynamicDownCast(RUNTIME_CLASS(class_name), object))

#define DECLARE_DYNAMIC(class_name)                                                                                    \
public:                                                                                                                \
    static CRuntimeClass* GetThisClass();                                                                              \
    CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name)                                                                                  \
    DECLARE_DYNAMIC(class_name)                                                                                        \
    static CObject* CreateObject();

#define IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, schema, create)                                            \
    CRuntimeClass* class_name::GetThisClass()                                                                          \
    {                                                                                                                  \
        static CRuntimeClass description = {#class_name, static_cast<int>(sizeof(class_name)), schema, create,         \
                                            &base_class_name::GetThisClass};                                           \
        return &description;                                                                                           \
    }                                                                                                                  \
    CRuntimeClass* class_name::GetRuntimeClass() const                                                                 \
    {                                                                                                                  \
        return GetThisClass();                                                                                         \
    }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                                                                 \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                                               \
    CObject* class_name::CreateObject()                                                                                \
    {                                                                                                                  \
        return new class_name;                                                                                         \
    }                                                                                                                  \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, &class_name::CreateObject)
