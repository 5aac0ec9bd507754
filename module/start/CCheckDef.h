#pragma once

#include "platform/platform.h"

/// Follows the host's editor: which keeps g_bInCommand true.
class CCheckDef : public AcEditorReactor2
{
public:
    CCheckDef();
    ~CCheckDef() override;
    CCheckDef(const CCheckDef&) = delete;
    CCheckDef& operator=(const CCheckDef&) = delete;

    void commandWillStart(const ACHAR* command) override;
    void commandEnded(const ACHAR* command) override;
    void commandCancelled(const ACHAR* command) override;
    void commandFailed(const ACHAR* command) override;
};
