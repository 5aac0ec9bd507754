#pragma once

#include "module/base/CArxApp.h"
#include "module/tools/CTool.h"

/// Makes a tool, which ends the one before it and becomes the active one, and starts it. Null if it declined, and was
/// deleted, or if it had already ended: a construction may work off messages, and one of them may have ended the tool
/// or put another in its place.
template <typename Tool> Tool* StartTool()
{
    const unsigned madeBefore = CTool::MadeSoFar();
    auto* tool = new Tool;
    if (g_pArxApp->m_pTool != tool || CTool::MadeSoFar() != madeBefore + 1)
        return nullptr; // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): it is deleted, not lost
    if (tool->Start())
        return tool;
    delete g_pArxApp->m_pTool;
    return nullptr;
}
