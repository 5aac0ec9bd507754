#pragma once

#include "platform/platform.h"

/// Lends a region, or none, to a record for the length of one request. The reply may put a region of its own in its
/// place, which nobody reads and the record does not free.
class LentRegion
{
public:
    LentRegion(CRgn*& field, CRgn* region) : m_field(field), m_lent(region) { m_field = m_lent; }
    ~LentRegion()
    {
        if (m_field != m_lent)
            delete m_field;
        m_field = nullptr;
    }
    LentRegion(const LentRegion&) = delete;
    LentRegion& operator=(const LentRegion&) = delete;

private:
    CRgn*& m_field;
    CRgn* m_lent;
};
