// What every header of the class library stands on: Win32, its C types and the common checks.
#pragma once

#include <windows.h>
#include <cassert>
#include <commctrl.h>
#include <commdlg.h>
#include <tchar.h>

#include "standin/export.h"

#define AFXAPI
#define AFX_CDECL
#define afx_msg

#define ASSERT(condition) assert(condition)
#define VERIFY(condition) static_cast<void>(condition)
