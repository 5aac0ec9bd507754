#include "module/dialogs/CDDespecle.h"

#include "module/resources/resource.h"

CDDespecle::CDDespecle() : CSizeFilterDialog(IDD_DESPECKLE) {}
