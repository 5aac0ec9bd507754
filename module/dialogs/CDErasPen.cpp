#include "module/dialogs/CDErasPen.h"

#include "module/resources/resource.h"

CDErasPen::CDErasPen() : CBrushDialog(IDD_ERASER) {}
