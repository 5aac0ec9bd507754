#pragma once

#include <span>

#include "platform/platform.h"

/// A command of the module; its name serves as the global and the local one.
struct CommandRow
{
    const wchar_t* name;
    void (*handler)();
};

/// All commands, in the order in which they are registered.
std::span<const CommandRow> CommandTable();

/// Gives the host all commands, and enters each in the application list, so that it loads the module on demand.
void RegisterCommands(AcadAppInfo& application);
/// Takes all of them back from the host; the application list keeps them.
void RemoveCommands();
