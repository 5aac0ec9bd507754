#include "standin/arx/rxobject.h"

#include "standin/arx/rx_define.h"

AcRxObject::~AcRxObject() = default;

AcRxClass* AcRxObject::desc()
{
    static AcRxClass description(L"AcRxObject", nullptr);
    return &description;
}

AcRxClass* AcRxObject::isA() const
{
    return desc();
}

bool AcRxObject::isKindOf(const AcRxClass* type) const
{
    return isA()->isDerivedFrom(type);
}

AcRxClass::AcRxClass(const ACHAR* name, const AcRxClass* parent) : m_name(name), m_parent(parent) {}

ACRX_DEFINE_MEMBERS(AcRxClass, AcRxObject)

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const
{
    for (const AcRxClass* type = this; type; type = type->m_parent) {
        if (type == other)
            return true;
    }
    return false;
}
