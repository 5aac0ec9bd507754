// CDialog: dialogs from the module's templates, and the exchange of values between controls and members.
#pragma once

#include "standin/afx/afx_window.h"

class HALVORAN_STANDIN_API CDialog : public CWnd
{
    DECLARE_DYNAMIC(CDialog)
public:
    CDialog() = default;
    explicit CDialog(LPCWSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    /// Modeless.
    virtual BOOL Create(LPCWSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    virtual BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    virtual BOOL CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr);

    /// The result of EndDialog; -1 when the dialog cannot be made.
    virtual INT_PTR DoModal();
    virtual BOOL OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel();
    void EndDialog(int nResult);

    BOOL PreTranslateMessage(MSG* pMsg) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;

protected:
    /// Around a modal call of the operating system: the owner's handle; detaches and wakes the owner again.
    HWND PreModal();
    void PostModal();
    afx_msg LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    using CWnd::Create;

    LPCWSTR m_lpszTemplateName = nullptr;
    LPCDLGTEMPLATE m_lpDialogTemplate = nullptr;
    CWnd* m_pParentWnd = nullptr;
    HWND m_hWndTop = nullptr; // top-level window that PreModal disabled

private:
    BOOL createFromTemplate(LPCDLGTEMPLATE dialogTemplate, HWND parent, HINSTANCE instance);
    DECLARE_MESSAGE_MAP()
};

/// One run of DoDataExchange. Fail leaves it by an exception that UpdateData catches.
class HALVORAN_STANDIN_API CDataExchange
{
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate);

    /// The control; remembered, so that Fail puts the focus there. A missing control is CNotSupportedException*.
    HWND PrepareCtrl(int nIDC);
    HWND PrepareEditCtrl(int nIDC);
    [[noreturn]] void Fail();

    BOOL m_bSaveAndValidate;
    CWnd* m_pDlgWnd;
    HWND m_hWndLastControl = nullptr;
    BOOL m_bEditLastControl = FALSE;
};

HALVORAN_STANDIN_API void DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value);
HALVORAN_STANDIN_API void DDX_Text(CDataExchange* pDX, int nIDC, short& value);
HALVORAN_STANDIN_API void DDX_Text(CDataExchange* pDX, int nIDC, int& value);
HALVORAN_STANDIN_API void DDX_Text(CDataExchange* pDX, int nIDC, UINT& value);
HALVORAN_STANDIN_API void DDX_Text(CDataExchange* pDX, int nIDC, long& value);
HALVORAN_STANDIN_API void DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value);
HALVORAN_STANDIN_API void DDX_Text(CDataExchange* pDX, int nIDC, float& value);
HALVORAN_STANDIN_API void DDX_Text(CDataExchange* pDX, int nIDC, double& value);
HALVORAN_STANDIN_API void DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
HALVORAN_STANDIN_API void DDX_Check(CDataExchange* pDX, int nIDC, int& value);
/// The index of the checked button in the group that begins with nIDC; -1 for none.
HALVORAN_STANDIN_API void DDX_Radio(CDataExchange* pDX, int nIDC, int& value);
HALVORAN_STANDIN_API void DDX_CBString(CDataExchange* pDX, int nIDC, CString& value);
HALVORAN_STANDIN_API void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);
HALVORAN_STANDIN_API void DDX_Slider(CDataExchange* pDX, int nIDC, int& value);
/// Attaches the control to the object on the first run.
HALVORAN_STANDIN_API void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);

HALVORAN_STANDIN_API void DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal);
HALVORAN_STANDIN_API void DDV_MinMaxUInt(CDataExchange* pDX, UINT value, UINT minVal, UINT maxVal);
HALVORAN_STANDIN_API void DDV_MinMaxLong(CDataExchange* pDX, long value, long minVal, long maxVal);
HALVORAN_STANDIN_API void DDV_MinMaxDouble(CDataExchange* pDX, const double& value, double minVal, double maxVal);
HALVORAN_STANDIN_API void DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars);
