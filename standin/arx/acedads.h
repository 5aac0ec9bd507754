// Calls of the editor: command line, system variables, selection sets.
#pragma once

#include "standin/arx/adsdef.h"

/// Types a text at the command line when the host is next idle; "CANCELCMD" alone cancels what is running.
extern "C" HALVORAN_STANDIN_API Adesk::Boolean acedPostCommand(const ACHAR* text);
/// Runs one of the host's own commands at once: type codes each followed by their value, up to RTNONE or 0.
/// RTNORM, or RTERROR if there is no such command. Strings are wide.
HALVORAN_STANDIN_API int acedCommand(int type, ...);
/// Shows a message with an OK button; RTNORM.
HALVORAN_STANDIN_API int acedAlert(const ACHAR* text);

/// Reads a system variable; RTERROR if there is none of that name. Names are compared without regard to case. A string
/// in the result belongs to the caller, who frees it with acutDelString.
HALVORAN_STANDIN_API int acedGetVar(const ACHAR* name, resbuf* result);
/// RTREJ for a variable that can only be read, or a value of the wrong type.
HALVORAN_STANDIN_API int acedSetVar(const ACHAR* name, const resbuf* value);

/// Selects entities: mode "X" takes the whole drawing, of every kind and in all spaces; mode null asks the user. The
/// filter is a list of group codes that all have to fit: 0 the type's name, 8 the layer's, 67 the number 1 for paper
/// space and 0 for model space, 410 the layout's name. Names are in wide characters, without regard to case and without
/// wildcards. RTNORM with a set that the caller frees, RTERROR if nothing was selected or another group is in the
/// filter, RTCAN if the user gave up.
HALVORAN_STANDIN_API int acedSSGet(const ACHAR* mode, const void* point1, const void* point2, const resbuf* filter,
                                   ads_name set);
HALVORAN_STANDIN_API int acedSSLength(const ads_name set, Adesk::Int32* length);
/// RTERROR if the index is out of range.
HALVORAN_STANDIN_API int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity);
HALVORAN_STANDIN_API int acedSSFree(const ads_name set);
