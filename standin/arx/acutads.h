// Building and freeing value lists; text for the command line.
#pragma once

#include "standin/arx/adsdef.h"

/// Type codes each followed by their value, up to RTNONE or 0. RTDXF0 stands for group 0, which would end the list.
/// The caller frees the list with acutRelRb; strings are copied. Null if a code is unknown.
HALVORAN_STANDIN_API resbuf* acutBuildList(int type, ...);
HALVORAN_STANDIN_API resbuf* acutNewRb(int type);
/// Frees the whole list with its strings; RTNORM.
HALVORAN_STANDIN_API int acutRelRb(resbuf* list);
/// Writes text on the command line, formatted as by wprintf; RTERROR if nobody shows it.
HALVORAN_STANDIN_API int acutPrintf(const ACHAR* format, ...);
/// Frees a string that acedGetVar returned, and clears the pointer.
HALVORAN_STANDIN_API void acutDelString(ACHAR*& text);
