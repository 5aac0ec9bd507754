#pragma once

#include "module/dialogs/CSizeFilterDialog.h"

/// "Fill": how large a hole may be that is filled, and where.
class CDFill : public CSizeFilterDialog
{
public:
    CDFill();
};
