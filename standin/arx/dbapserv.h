// Services of the host program to databases.
#pragma once

#include "standin/export.h"

class AcDbDatabase;

class HALVORAN_STANDIN_API AcDbHostApplicationServices
{
public:
    virtual ~AcDbHostApplicationServices() = default;

    /// The database of the current drawing, or null.
    virtual AcDbDatabase* workingDatabase() const = 0;
};

HALVORAN_STANDIN_API AcDbHostApplicationServices* acdbHostApplicationServices();
