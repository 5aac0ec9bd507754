// DDX and DDV: values between a dialog's controls and its members.
#include <cfloat>
#include <cwchar>
#include <limits>

#include "standin/afx/afx_app.h"
#include "standin/afx/afx_dialog.h"
#include "standin/afx/afx_exception.h"

CDataExchange::CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate)
    : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd)
{}

HWND CDataExchange::PrepareCtrl(int nIDC)
{
    const HWND control = ::GetDlgItem(m_pDlgWnd->m_hWnd, nIDC);
    if (!control)
        AfxThrowNotSupportedException();
    m_hWndLastControl = control;
    m_bEditLastControl = FALSE;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC)
{
    const HWND control = PrepareCtrl(nIDC);
    m_bEditLastControl = TRUE;
    return control;
}

void CDataExchange::Fail()
{
    if (m_bSaveAndValidate && m_hWndLastControl) {
        ::SetFocus(m_hWndLastControl);
        if (m_bEditLastControl)
            ::SendMessageW(m_hWndLastControl, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

namespace {

CString textOf(HWND control)
{
    CString text;
    const int length = ::GetWindowTextLengthW(control);
    ::GetWindowTextW(control, text.GetBufferSetLength(length), length + 1);
    text.ReleaseBuffer();
    return text;
}

// A text that is there already is left alone, which spares a flicker and keeps the caret.
void showText(HWND control, LPCWSTR text)
{
    if (textOf(control) != text)
        ::SetWindowTextW(control, text);
}

[[noreturn]] void refuse(CDataExchange* exchange, LPCWSTR message)
{
    AfxMessageBox(message, MB_ICONEXCLAMATION);
    exchange->Fail();
}

template <typename Value> LPCWSTR askForNumber()
{
    if (std::numeric_limits<Value>::max() == 255)
        return L"Please enter an integer between 0 and 255.";
    return std::numeric_limits<Value>::is_signed ? L"Please enter an integer." : L"Please enter a positive integer.";
}

template <typename Value> void exchangeInteger(CDataExchange* exchange, int id, Value& value)
{
    const HWND control = exchange->PrepareEditCtrl(id);
    if (!exchange->m_bSaveAndValidate) {
        showText(control, std::to_wstring(value).c_str());
        return;
    }
    CString text = textOf(control);
    text.Trim();
    wchar_t* end = nullptr;
    const long long number = std::wcstoll(text, &end, 10);
    if (text.IsEmpty() || *end != L'\0' || number < static_cast<long long>(std::numeric_limits<Value>::min()) ||
        number > static_cast<long long>(std::numeric_limits<Value>::max()))
        refuse(exchange, askForNumber<Value>());
    value = static_cast<Value>(number);
}

template <typename Value> void exchangeReal(CDataExchange* exchange, int id, Value& value, int digits)
{
    const HWND control = exchange->PrepareEditCtrl(id);
    if (!exchange->m_bSaveAndValidate) {
        CString text;
        text.Format(L"%.*g", digits, static_cast<double>(value));
        showText(control, text);
        return;
    }
    CString text = textOf(control);
    text.Trim();
    wchar_t* end = nullptr;
    const double number = std::wcstod(text, &end);
    if (text.IsEmpty() || *end != L'\0')
        refuse(exchange, L"Please enter a number.");
    value = static_cast<Value>(number);
}

template <typename Value> void requireRange(CDataExchange* exchange, Value value, Value low, Value high, LPCWSTR format)
{
    if (!exchange->m_bSaveAndValidate || (value >= low && value <= high))
        return;
    CString message;
    message.Format(format, low, high);
    refuse(exchange, message);
}

} // namespace

void DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value)
{
    exchangeInteger(pDX, nIDC, value);
}

void DDX_Text(CDataExchange* pDX, int nIDC, short& value)
{
    exchangeInteger(pDX, nIDC, value);
}

void DDX_Text(CDataExchange* pDX, int nIDC, int& value)
{
    exchangeInteger(pDX, nIDC, value);
}

void DDX_Text(CDataExchange* pDX, int nIDC, UINT& value)
{
    exchangeInteger(pDX, nIDC, value);
}

void DDX_Text(CDataExchange* pDX, int nIDC, long& value)
{
    exchangeInteger(pDX, nIDC, value);
}

void DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value)
{
    exchangeInteger(pDX, nIDC, value);
}

void DDX_Text(CDataExchange* pDX, int nIDC, float& value)
{
    exchangeReal(pDX, nIDC, value, FLT_DIG);
}

void DDX_Text(CDataExchange* pDX, int nIDC, double& value)
{
    exchangeReal(pDX, nIDC, value, DBL_DIG);
}

void DDX_Text(CDataExchange* pDX, int nIDC, CString& value)
{
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = textOf(control);
    } else {
        showText(control, value);
    }
}

void DDX_Check(CDataExchange* pDX, int nIDC, int& value)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = static_cast<int>(::SendMessageW(control, BM_GETCHECK, 0, 0));
    } else {
        ::SendMessageW(control, BM_SETCHECK, value < 0 || value > 2 ? 0 : static_cast<WPARAM>(value), 0);
    }
}

void DDX_Radio(CDataExchange* pDX, int nIDC, int& value)
{
    HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = -1;
    int button = 0;
    do {
        if (::SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) {
            if (!pDX->m_bSaveAndValidate) {
                ::SendMessageW(control, BM_SETCHECK, button == value, 0);
            } else if (::SendMessageW(control, BM_GETCHECK, 0, 0)) {
                value = button;
            }
            ++button;
        }
        control = ::GetWindow(control, GW_HWNDNEXT);
    } while (control && !(::GetWindowLongPtrW(control, GWL_STYLE) & WS_GROUP));
}

namespace {

void exchangeIndex(CDataExchange* exchange, int id, int& index, UINT get, UINT set)
{
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate) {
        index = static_cast<int>(::SendMessageW(control, get, 0, 0));
    } else {
        ::SendMessageW(control, set, static_cast<WPARAM>(index), 0);
    }
}

} // namespace

void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index)
{
    exchangeIndex(pDX, nIDC, index, CB_GETCURSEL, CB_SETCURSEL);
}

void DDX_CBString(CDataExchange* pDX, int nIDC, CString& value)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = textOf(control);
    } else if (::SendMessageW(control, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                              reinterpret_cast<LPARAM>(value.GetString())) == CB_ERR) {
        ::SetWindowTextW(control, value);
    }
}

void DDX_Slider(CDataExchange* pDX, int nIDC, int& value)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = static_cast<int>(::SendMessageW(control, TBM_GETPOS, 0, 0));
    } else {
        ::SendMessageW(control, TBM_SETPOS, TRUE, value);
    }
}

void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl)
{
    if (rControl.m_hWnd)
        return;
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (!rControl.SubclassWindow(control))
        AfxThrowNotSupportedException();
}

void DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal)
{
    requireRange(pDX, value, minVal, maxVal, L"Please enter an integer between %d and %d.");
}

void DDV_MinMaxUInt(CDataExchange* pDX, UINT value, UINT minVal, UINT maxVal)
{
    requireRange(pDX, value, minVal, maxVal, L"Please enter an integer between %u and %u.");
}

void DDV_MinMaxLong(CDataExchange* pDX, long value, long minVal, long maxVal)
{
    requireRange(pDX, value, minVal, maxVal, L"Please enter an integer between %ld and %ld.");
}

void DDV_MinMaxDouble(CDataExchange* pDX, const double& value, double minVal, double maxVal)
{
    requireRange(pDX, value, minVal, maxVal, L"Please enter a number between %.15g and %.15g.");
}

void DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars)
{
    if (pDX->m_bSaveAndValidate) {
        if (value.GetLength() > nChars) {
            CString message;
            message.Format(L"Please enter no more than %d characters.", nChars);
            refuse(pDX, message);
        }
    } else if (pDX->m_hWndLastControl && pDX->m_bEditLastControl) {
        ::SendMessageW(pDX->m_hWndLastControl, EM_LIMITTEXT, static_cast<WPARAM>(nChars), 0);
    }
}
