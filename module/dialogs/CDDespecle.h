#pragma once

#include "module/dialogs/CSizeFilterDialog.h"

/// "Despeckles": how large a speck may be that is removed, and where.
class CDDespecle : public CSizeFilterDialog
{
public:
    CDDespecle();
};
