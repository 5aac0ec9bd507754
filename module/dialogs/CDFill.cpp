#include "module/dialogs/CDFill.h"

#include "module/resources/resource.h"

CDFill::CDFill() : CSizeFilterDialog(IDD_FILL) {}
