// The thread message hook by which the tools get their input, and what it remembers from message to message.
//
// The hook sees each message that the main thread takes from its queue. What it gives to a tool it neutralises, by
// setting the message's code to 0, so that the host's own windows don't act on it.
#pragma once

#include <memory>

#include "module/tools/CTimer.h"
#include "platform/platform.h"

/// 1 at each tool's construction; 0 around a modal dialog that a tool opens, so that the hook leaves its messages
/// alone.
extern int ToolInputEnabled;

/// Hooks installed. With any number but 1 the hook passes everything on: while one tool takes the place of another.
extern int ToolHookCount;

/// When the toolbar was last clicked, or a command last reached a tool; null long after that.
extern std::unique_ptr<CTimer> ButtonClickTimer;

/// CTool::ToolId of the tool that a click on the toolbar ended.
extern int LastToolIdOnClick;

/// The last command that was offered to CTool::OnCommand.
extern WORD LastToolCommand;

void InstallToolHook();
void RemoveToolHook();

/// Gives up the pending deletion of a tool, if there is one.
void StopToolCloseTimer();

LRESULT CALLBACK ToolMessageHook(int code, WPARAM wParam, LPARAM lParam);
