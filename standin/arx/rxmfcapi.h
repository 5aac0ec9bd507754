// The host's windows, as objects of the class library.
#pragma once

#include "standin/export.h"

class CMDIFrameWnd;
class CView;

/// Null while the host has no window.
HALVORAN_STANDIN_API CMDIFrameWnd* acedGetAcadFrame();
/// The drawing view of the current document; null if no drawing is open.
HALVORAN_STANDIN_API CView* acedGetAcadDwgView();
