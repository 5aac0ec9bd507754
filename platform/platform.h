// The one place that chooses between the host's own SDK and the stand-in for it.
#pragma once

#ifdef HALVORAN_SDK
#include "platform/sdk.h"
#else
#include "standin/afx/afx.h"
#include "standin/arx/arx.h"
#include "standin/atil/atil.h"
#endif

// The control toolkit's slider, of which the module needs no more than the class library's own has.
using CBCGPSliderCtrl = CSliderCtrl;
