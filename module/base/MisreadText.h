#pragma once

#include "platform/platform.h"

/// What the host sees of a text of 8-bit characters where it reads wide ones: another text, half as long. In a few
/// calls that is what it has always got, and what comes of them rests on it.
CString MisreadText(const char* text);
