// Lengths in dialogs. Inside they are millimetres; fields show them in the unit that the drawing's "lunits" asks for at
// that moment, with the user's own separators.
#pragma once

#include "platform/platform.h"

inline constexpr double MillimetresPerInch = 25.4;

/// Whether lengths are shown in millimetres; otherwise in inches.
bool IsMetricDrawing();

/// Reads a number field into `value`; does nothing while values are being shown. A unit field gives millimetres, a
/// plain field (one with the extended style WS_EX_TRANSPARENT) the number as it stands. A text without a number gives
/// 0.
void DDX_LengthValue(CDataExchange* exchange, int controlId, double& value);

/// Shows `value` in a number field; does nothing while values are being read. A unit field shows inches with two
/// decimals more than asked.
void DDX_LengthText(CDataExchange* exchange, int controlId, double value, int decimals);

/// The value as text between prefix and postfix: in millimetres, or in inches with two decimals more than asked; with
/// its unit if `withUnit`. -1 decimals ask for the drawing's own precision, unconverted, without unit and grouping.
CString FormatLength(double value, int decimals, bool withUnit, const CString& prefix, const CString& postfix);

/// Asked when a field loses the focus: whether it goes to another control of the dialog. On the way to Cancel a value
/// that is refused must not hold the user back, and a message about one must not bring up the next.
bool IsFieldLeftForAnother(const CWnd& dialog);
