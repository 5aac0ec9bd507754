#include "module/tools/RotateStart.h"

#include "module/base/COneShotTimer.h"
#include "module/tools/CBaseRotateTool.h"
#include "module/tools/CFreeRotateTool.h"
#include "module/tools/StartTool.h"

namespace {

constexpr UINT rotateDelay = 100; // ms

int rotateCode;

void StartRotateTool()
{
    if (!acedGetAcadDwgView())
        return; // the drawing was closed meanwhile, and the tool would have nothing to lie over
    if (rotateCode >= 0) {
        if (auto* tool = StartTool<CBaseRotateTool>())
            tool->SetChoice(rotateCode);
    } else {
        if (auto* tool = StartTool<CFreeRotateTool>())
            tool->SetChoice(rotateCode == RotateFreeSelection ? 1 : 0);
    }
}

using RotateStartTimer = COneShotTimer<StartRotateTool>;

} // namespace

void StartRotateToolLater(int code)
{
    rotateCode = code;
    RotateStartTimer::Start(rotateDelay);
}

void CancelRotateStart()
{
    RotateStartTimer::Stop();
}
