#pragma once

#include "platform/platform.h"

/// Writes a line on the host's command line, for what the user has to know but need not answer.
void SayOnCommandLine(const CString& text);
