// Run-time class information of the host's objects.
#pragma once

#include "standin/arx/adesk.h"

class AcRxClass;

class HALVORAN_STANDIN_API AcRxObject
{
public:
    virtual ~AcRxObject();

    static AcRxClass* desc();
    virtual AcRxClass* isA() const;
    bool isKindOf(const AcRxClass* type) const;

protected:
    AcRxObject() = default;
    AcRxObject(const AcRxObject&) = default;
    AcRxObject& operator=(const AcRxObject&) = default;
};

class HALVORAN_STANDIN_API AcRxClass : public AcRxObject
{
public:
    /// The parent is null for the root; both stay alive as long as the process.
    AcRxClass(const ACHAR* name, const AcRxClass* parent);

    static AcRxClass* desc();
    AcRxClass* isA() const override;

    const ACHAR* name() const { return m_name; }
    const AcRxClass* myParent() const { return m_parent; }
    bool isDerivedFrom(const AcRxClass* other) const;

private:
    const ACHAR* m_name;
    const AcRxClass* m_parent;
};

#define ACRX_DECLARE_MEMBERS(CLASS)                                                                                    \
public:                                                                                                                \
    static AcRxClass* desc();                                                                                          \
    AcRxClass* isA() const override
