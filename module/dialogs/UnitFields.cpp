#include "module/dialogs/UnitFields.h"

#include <cwchar>

namespace {

constexpr int longestFieldText = 254;
constexpr int longestSeparator = 64;
constexpr int longestNumber = 256;
constexpr int extraDecimalsOfInches = 2;
constexpr int firstUnitOfInches = 3; // of "lunits": 1 scientific, 2 decimal, 3 engineering, 4 architectural, ...

int SystemInteger(const wchar_t* name)
{
    resbuf value{};
    return acedGetVar(name, &value) == RTNORM ? value.resval.rint : 0;
}

CString Separator(LCTYPE type)
{
    wchar_t text[longestSeparator] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, longestSeparator);
    return text;
}

// With the user's decimal separator and the grouping separator given.
CString FormatNumber(double value, int decimals, CString thousandSeparator)
{
    CString plain;
    plain.Format(L"%f", value);
    const int comma = plain.Find(L',');
    if (comma >= 0)
        plain.SetAt(comma, L'.');

    CString decimalSeparator = Separator(LOCALE_SDECIMAL);
    NUMBERFMTW format{};
    format.NumDigits = static_cast<UINT>(decimals);
    format.LeadingZero = 1;
    format.Grouping = 3;
    format.lpDecimalSep = decimalSeparator.GetBuffer(0);
    format.lpThousandSep = thousandSeparator.GetBuffer(0);
    format.NegativeOrder = 1;
    // A number that would not fit with its separators is shown as it is: not every system bears to be asked.
    if (plain.GetLength() > longestNumber / 2)
        return plain;
    wchar_t text[longestNumber] = {};
    return GetNumberFormatW(LOCALE_USER_DEFAULT, 0, plain, &format, text, longestNumber) ? CString(text) : plain;
}

bool IsUnitField(HWND control)
{
    return !(GetWindowLongW(control, GWL_EXSTYLE) & WS_EX_TRANSPARENT);
}

} // namespace

bool IsMetricDrawing()
{
    return SystemInteger(L"lunits") < firstUnitOfInches;
}

void DDX_LengthValue(CDataExchange* exchange, int controlId, double& value)
{
    if (!exchange->m_bSaveAndValidate)
        return;
    const HWND control = exchange->PrepareEditCtrl(controlId);
    wchar_t typed[longestFieldText + 1] = {};
    GetWindowTextW(control, typed, longestFieldText + 1);
    CString text(typed);
    const CString separator = Separator(LOCALE_STHOUSAND);
    for (int at = text.Find(separator); !separator.IsEmpty() && at >= 0; at = text.Find(separator))
        text.Delete(at);
    // What follows the number, a unit for instance, ends the conversion. It reads a point as the decimal separator,
    // whatever the user's own is.
    value = _wtof(text);
    if (IsUnitField(control) && !IsMetricDrawing())
        value *= MillimetresPerInch;
}

void DDX_LengthText(CDataExchange* exchange, int controlId, double value, int decimals)
{
    if (exchange->m_bSaveAndValidate)
        return;
    const HWND control = exchange->PrepareEditCtrl(controlId);
    CString suffix;
    if (IsUnitField(control)) {
        const bool metric = IsMetricDrawing();
        suffix = metric ? L" mm" : L"\"";
        value = metric ? value : value / MillimetresPerInch;
        decimals += metric ? 0 : extraDecimalsOfInches;
    }
    SetWindowTextW(control, FormatNumber(value, decimals, Separator(LOCALE_STHOUSAND)) + suffix);
}

CString FormatLength(double value, int decimals, bool withUnit, const CString& prefix, const CString& postfix)
{
    if (decimals == -1)
        return prefix + FormatNumber(value, SystemInteger(L"luprec"), L"") + postfix;
    const bool metric = IsMetricDrawing();
    const CString unit(!withUnit ? L"" : metric ? L" mm" : L"\"");
    const double shown = metric ? value : value / MillimetresPerInch;
    const int shownDecimals = decimals + (metric ? 0 : extraDecimalsOfInches);
    return prefix + FormatNumber(shown, shownDecimals, Separator(LOCALE_STHOUSAND)) + unit + postfix;
}

bool IsFieldLeftForAnother(const CWnd& dialog)
{
    const HWND next = GetFocus();
    return next && IsChild(dialog.m_hWnd, next) && next != GetDlgItem(dialog.m_hWnd, IDCANCEL);
}
