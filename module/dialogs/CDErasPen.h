#pragma once

#include "module/dialogs/CBrushDialog.h"

/// "Eraser size". Changes nothing itself.
class CDErasPen : public CBrushDialog
{
public:
    CDErasPen();
};
