#include "module/shell/CFileDialogEx.h"

#include <algorithm>
#include <cwchar>
#include <dlgs.h>

#include "module/shell/CPathSplit.h"

COLORREF ModuleBackColor = 0;

namespace {

constexpr size_t manyNamesLength = 100000 / sizeof(wchar_t);

// The box for the name: a combo box in the newer form of the dialog, an edit box in the older.
constexpr int nameBoxIds[] = {cmb13, edt1};

std::unique_ptr<CBrush> backBrush;
int liveDialogs = 0;

void UpdateModuleBackColor()
{
    ModuleBackColor = GetSysColor(COLOR_BTNFACE);
}

LRESULT CALLBACK FileDialogSubclassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    // Edit and list boxes keep their own colours.
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
        return reinterpret_cast<LRESULT>(FileDialogBrush());
    default:
        return CallWindowProcW(reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_USERDATA)), window, message,
                               wParam, lParam);
    }
}

HWND FindNameBox(HWND dialog)
{
    for (const int id : nameBoxIds) {
        if (const HWND box = GetDlgItem(dialog, id))
            return box;
    }
    return nullptr;
}

// "plan.tif" with the pattern "*.png" becomes "plan.png". A pattern counts without its first two characters, whatever
// they are: with "*.*" the extension is an asterisk.
CString NameForPattern(const CString& name, const CString& pattern)
{
    constexpr int patternLead = 2;
    if (pattern.GetLength() <= patternLead)
        return name;
    const CString extension = pattern.Mid(patternLead);
    const int dot = name.ReverseFind(L'.');
    if (dot >= 0)
        return name.Left(dot + 1) + extension;
    return name + L"." + extension;
}

// Keeps the owner of a modal dialog disabled, and gives `focus` back in the end.
class ModalOwner
{
public:
    ModalOwner(HWND owner, HWND focus) : m_focus(focus), m_owner(owner)
    {
        m_disabled = m_owner && IsWindowEnabled(m_owner);
        if (m_disabled)
            EnableWindow(m_owner, FALSE);
    }
    ~ModalOwner()
    {
        if (m_disabled)
            EnableWindow(m_owner, TRUE);
        if (IsWindow(m_focus))
            SetFocus(m_focus);
    }
    ModalOwner(const ModalOwner&) = delete;
    ModalOwner& operator=(const ModalOwner&) = delete;

private:
    HWND m_focus;
    HWND m_owner;
    bool m_disabled;
};

} // namespace

HBRUSH FileDialogBrush()
{
    return backBrush ? static_cast<HBRUSH>(*backBrush) : nullptr;
}

CFileDialogEx::CFileDialogEx(BOOL openDialog, DWORD flags, LPCWSTR filter, CWnd* parent)
    : CFileDialog(openDialog, nullptr, nullptr, flags | OFN_EXPLORER, filter, parent, 0, TRUE)
{
    if (!backBrush) {
        UpdateModuleBackColor();
        backBrush = std::make_unique<CBrush>(ModuleBackColor);
    }
    ++liveDialogs;
}

CFileDialogEx::~CFileDialogEx()
{
    if (--liveDialogs == 0)
        backBrush.reset();
}

INT_PTR CFileDialogEx::DoModal()
{
    m_ofn.Flags |= OFN_ENABLEHOOK;
    m_pOldHook = m_ofn.lpfnHook;
    m_ofn.lpfnHook = FileDialogHook;
    m_ofn.lCustData = reinterpret_cast<LPARAM>(this);
    PrepareNameBuffer();
    OpenInPresetFolder();
    const int result = ShowDialog();
    m_ofn.lpfnHook = m_pOldHook;
    return result ? result : IDCANCEL;
}

void CFileDialogEx::PrepareNameBuffer()
{
    if ((m_ofn.Flags & OFN_ALLOWMULTISELECT) && m_nameBuffer.empty()) {
        m_nameBuffer.resize(manyNamesLength);
        std::copy_n(m_ofn.lpstrFile, std::min<size_t>(std::wcslen(m_ofn.lpstrFile), manyNamesLength - 1),
                    m_nameBuffer.begin());
        m_ofn.lpstrFile = m_nameBuffer.data();
        m_ofn.nMaxFile = manyNamesLength;
    }
    // Behind the name there may be rests of an earlier list of names.
    wchar_t* end = m_ofn.lpstrFile + std::wcslen(m_ofn.lpstrFile);
    std::fill(end, m_ofn.lpstrFile + m_ofn.nMaxFile, L'\0');
}

// A preset path wins over any initial folder; a folder alone opens there with an empty name.
void CFileDialogEx::OpenInPresetFolder()
{
    if (!m_ofn.lpstrFile[0])
        return;
    const CPathSplit preset(m_ofn.lpstrFile);
    if (preset.Folder()[0]) {
        m_presetFolder = preset.Folder();
        m_ofn.lpstrInitialDir = m_presetFolder;
    }
    if (!preset.NameExt()[0])
        m_ofn.lpstrFile[0] = L'\0';
}

int CFileDialogEx::ShowDialog()
{
    const HWND focus = ::GetFocus(); // before PreModal, which may disable the window that has it
    const HWND ownerWindow = PreModal();
    m_ofn.hwndOwner = ownerWindow;
    AfxUnhookWindowCreate();
    int result;
    {
        const ModalOwner owner(ownerWindow, focus);
        // The dialog's hook window is to become this object.
        AfxGetThreadState()->m_pAlternateWndInit = this;
        result = m_bOpenFileDialog ? GetOpenFileNameW(&m_ofn) : GetSaveFileNameW(&m_ofn);
        // Behind one name a list of names ends.
        const size_t length = std::wcslen(m_ofn.lpstrFile);
        if (m_ofn.nFileOffset < length && length + 1 < m_ofn.nMaxFile)
            m_ofn.lpstrFile[length + 1] = L'\0';
        AfxGetThreadState()->m_pAlternateWndInit = nullptr;
    }
    PostModal();
    return result;
}

UINT_PTR CALLBACK CFileDialogEx::FileDialogHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        const auto* fields = reinterpret_cast<const OPENFILENAMEW*>(lParam);
        SetWindowLongPtrW(window, DWLP_USER, fields->lCustData);
        auto* opened = reinterpret_cast<CFileDialogEx*>(fields->lCustData);
        opened->m_pFrameSubclass = std::make_unique<CSubCwnd>(::GetParent(window), FileDialogSubclassProc);
    }
    auto* dialog = reinterpret_cast<CFileDialogEx*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!dialog)
        return 0;
    if (message == WM_DESTROY)
        dialog->m_pFrameSubclass.reset();
    return dialog->m_pOldHook ? dialog->m_pOldHook(window, message, wParam, lParam) : 0;
}

BOOL CFileDialogEx::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    m_pDialogWindow = CWnd::FromHandle(reinterpret_cast<const NMHDR*>(lParam)->hwndFrom);
    return CFileDialog::OnNotify(wParam, lParam, pResult);
}

CString CFileDialogEx::ChosenPattern() const
{
    const wchar_t* text = m_ofn.lpstrFilter;
    if (!text)
        return CString();
    for (DWORD pair = 1; pair < m_ofn.nFilterIndex && *text; ++pair) {
        text += std::wcslen(text) + 1; // its text
        text += std::wcslen(text) + 1; // its pattern
    }
    return *text ? CString(text + std::wcslen(text) + 1) : CString();
}

void CFileDialogEx::OnTypeChange()
{
    const HWND nameBox = FindNameBox(m_pDialogWindow->GetSafeHwnd());
    if (!nameBox)
        return;
    wchar_t name[CPathSplit::partLength] = {};
    ::GetWindowTextW(nameBox, name, CPathSplit::partLength);
    ::SetWindowTextW(nameBox, NameForPattern(name, ChosenPattern()));
    CFileDialog::OnTypeChange();
}
