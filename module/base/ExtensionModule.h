#pragma once

#include "platform/platform.h"

/// Makes the module's resources and settings known to the class library. The result of the registration is not looked
/// at: the module starts without it too, and finds its resources through CTempMFC.
void ExtensionModuleInit(HINSTANCE module);
void ExtensionModuleEnd();

/// The file that this code was loaded from, under whatever name the host has it.
CString ModuleFilePath();

/// The full path of a file beside the module's own file.
CString ProgramFilePath(const CString& name);
