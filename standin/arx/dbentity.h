// Entities: the objects that are drawn.
#pragma once

#include "standin/arx/dbobject.h"

class HALVORAN_STANDIN_API AcDbEntity : public AcDbObject
{
    ACRX_DECLARE_MEMBERS(AcDbEntity);

    AcDbEntity() = default;
};
