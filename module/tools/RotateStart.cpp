#include "module/tools/RotateStart.h"

#include "module/base/CArxApp.h"
#include "module/base/CTempMFC.h"
#include "module/tools/CBaseRotateTool.h"
#include "module/tools/CFreeRotateTool.h"

namespace {

int rotateCode;
UINT_PTR rotateTimer;

constexpr UINT rotateDelay = 100; // ms

template <typename Tool> void StartTool(int choice)
{
    const unsigned madeBefore = CTool::MadeSoFar();
    auto* tool = new Tool;
    // Its construction may have pumped messages, and one of them may have ended it or put another in its place.
    if (g_pArxApp->m_pTool != tool || CTool::MadeSoFar() != madeBefore + 1)
        return; // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): it is deleted, not lost
    if (tool->Start()) {
        tool->SetChoice(choice);
    } else {
        delete tool;
    }
}

void CALLBACK RotateStartTimerProc(HWND, UINT, UINT_PTR, DWORD)
{
    CancelRotateStart();
    if (!acedGetAcadDwgView())
        return; // the drawing was closed meanwhile, and the tool would have nothing to lie over
    const CTempMFC resources;
    if (rotateCode >= 0) {
        StartTool<CBaseRotateTool>(rotateCode);
    } else {
        StartTool<CFreeRotateTool>(rotateCode == RotateFreeSelection ? 1 : 0);
    }
}

} // namespace

void StartRotateToolLater(int code)
{
    CancelRotateStart();
    rotateCode = code;
    rotateTimer = SetTimer(nullptr, 0, rotateDelay, RotateStartTimerProc);
}

void CancelRotateStart()
{
    if (rotateTimer)
        KillTimer(nullptr, rotateTimer);
    rotateTimer = 0;
}
