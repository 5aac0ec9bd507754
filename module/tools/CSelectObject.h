#pragma once

#include "platform/platform.h"

/// Has a pen or a bitmap selected into a device context while it lives. Both outlive it.
template <typename Object> class CSelectObject
{
public:
    CSelectObject(CDC& context, Object& object) : m_context(context), m_pPrevious(context.SelectObject(&object)) {}
    ~CSelectObject()
    {
        if (m_pPrevious)
            m_context.SelectObject(m_pPrevious);
    }
    CSelectObject(const CSelectObject&) = delete;
    CSelectObject& operator=(const CSelectObject&) = delete;

private:
    CDC& m_context;
    Object* m_pPrevious;
};
