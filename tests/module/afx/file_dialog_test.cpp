// The file dialog, worked through its real controls.
#include "driver.h"

#include "standin/afx/afx.h"

#include <gtest/gtest.h>

namespace {

constexpr wchar_t title[] = L"Choose a scan";
constexpr int typeBox = 1136;

HWND nameBox(HWND dialog)
{
    const HWND combined = ::GetDlgItem(dialog, 1148);
    return combined ? combined : ::GetDlgItem(dialog, 1152);
}

void chooseType(HWND dialog, int index)
{
    const HWND box = ::GetDlgItem(dialog, typeBox);
    ::SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    for (const WORD code : {CBN_SELENDOK, CBN_SELCHANGE})
        ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(typeBox, code), reinterpret_cast<LPARAM>(box));
}

class ScanDialog : public CFileDialog
{
public:
    explicit ScanDialog(BOOL open, LPCWSTR name = nullptr)
        : CFileDialog(open, nullptr, name, OFN_HIDEREADONLY | OFN_NOCHANGEDIR,
                      L"TIFF (*.tif)|*.tif|PNG (*.png)|*.png|All (*.*)|*.*||")
    {
        GetOFN().lpstrTitle = title;
    }
    std::wstring heard;
    CString pathDuring;
    HWND sender = nullptr;
    int refusals = 0;

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override
    {
        sender = reinterpret_cast<NMHDR*>(lParam)->hwndFrom;
        return CFileDialog::OnNotify(wParam, lParam, result);
    }
    void OnInitDone() override { heard += L"init "; }
    void OnTypeChange() override { heard += L"type" + std::to_wstring(GetOFN().nFilterIndex) + L" "; }
    BOOL OnFileNameOK() override
    {
        heard += L"ok ";
        pathDuring = GetPathName();
        return refusals-- > 0;
    }
};

class FileDialog : public testing::Test
{
protected:
    void SetUp() override
    {
        wchar_t temporary[MAX_PATH];
        ::GetTempPathW(MAX_PATH, temporary);
        folder = CString(temporary) + L"halvoran-file-dialog";
        ::CreateDirectoryW(folder, nullptr);
        scan = folder + L"\\scan one.tif";
        CFile file(scan, CFile::modeCreate | CFile::modeWrite);
        file.Write("II", 2);
    }
    void TearDown() override
    {
        ::DeleteFileW(scan);
        ::RemoveDirectoryW(folder);
    }
    // The dialog is there and has told that it is ready.
    static HWND ready(const ScanDialog& dialog)
    {
        const HWND window = windowTitled(title);
        return window && dialog.heard.find(L"init") != std::wstring::npos ? window : nullptr;
    }
    CWinApp app{L"Test"};
    CString folder;
    CString scan;
};

TEST_F(FileDialog, OpensTheNamedFileAfterAChangeOfType)
{
    ScanDialog dialog(TRUE);
    const CString initial = folder;
    dialog.GetOFN().lpstrInitialDir = initial;
    Driver driver({[&] {
        const HWND window = ready(dialog);
        if (!window)
            return false;
        EXPECT_EQ(CWnd::FromHandlePermanent(dialog), &dialog);
        EXPECT_EQ(::GetParent(dialog), window) << "the object holds the hook's window, a child of the dialog";
        EXPECT_EQ(dialog.sender, window);
        EXPECT_EQ(AfxGetThreadState()->m_pAlternateWndInit, nullptr);
        chooseType(window, 2);
        ::SetWindowTextW(nameBox(window), L"scan one.tif");
        ::PostMessageW(window, WM_COMMAND, IDOK, 0);
        return true;
    }});
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.heard, L"init type3 ok ");
    EXPECT_TRUE(dialog.pathDuring.CompareNoCase(scan) == 0) << dialog.pathDuring.GetString();
    EXPECT_EQ(dialog.GetPathName().CompareNoCase(scan), 0) << dialog.GetPathName().GetString();
    EXPECT_TRUE(dialog.GetFileName() == L"scan one.tif");
    EXPECT_TRUE(dialog.GetFileExt() == L"tif");
    EXPECT_TRUE(dialog.GetFileTitle() == L"scan one");
    EXPECT_EQ(dialog.GetFolderPath().CompareNoCase(folder), 0);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST_F(FileDialog, AnAcceptedNameMayBeRefused)
{
    ScanDialog dialog(FALSE);
    dialog.refusals = 1;
    const CString initial = folder;
    dialog.GetOFN().lpstrInitialDir = initial;
    Driver driver({[&] {
                       const HWND window = ready(dialog);
                       if (!window)
                           return false;
                       ::SetWindowTextW(nameBox(window), L"new.tif");
                       ::PostMessageW(window, WM_COMMAND, IDOK, 0);
                       return true;
                   },
                   [&] {
                       const HWND window = windowTitled(title);
                       if (dialog.heard != L"init ok " || !window)
                           return false;
                       ::PostMessageW(window, WM_COMMAND, IDOK, 0);
                       return true;
                   }});
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.heard, L"init ok ok ");
    EXPECT_EQ(dialog.GetPathName().CompareNoCase(folder + L"\\new.tif"), 0);
}

TEST_F(FileDialog, CancelGivesIdcancelAndTheOwnerWakes)
{
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP | WS_VISIBLE, CRect(0, 0, 90, 90), nullptr, 0));
    app.m_pMainWnd = &owner;
    ScanDialog dialog(TRUE, scan);
    Driver driver({[&] {
        const HWND window = ready(dialog);
        if (!window)
            return false;
        EXPECT_FALSE(owner.IsWindowEnabled());
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
        return true;
    }});
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_TRUE(owner.IsWindowEnabled());
    app.m_pMainWnd = nullptr;
    owner.DestroyWindow();
}

// A dialog that puts a hook of its own before the library's and runs the modal call itself.
class OwnLoop : public ScanDialog
{
public:
    OwnLoop() : ScanDialog(TRUE) {}
    bool hookRan = false;

    INT_PTR DoModal() override
    {
        m_oldHook = m_ofn.lpfnHook;
        m_ofn.lpfnHook = hook;
        m_ofn.lCustData = reinterpret_cast<LPARAM>(this);
        m_ofn.hwndOwner = PreModal();
        AfxUnhookWindowCreate();
        AfxGetThreadState()->m_pAlternateWndInit = this;
        const BOOL result = ::GetOpenFileNameW(&m_ofn);
        AfxGetThreadState()->m_pAlternateWndInit = nullptr;
        PostModal();
        m_ofn.lpfnHook = m_oldHook;
        return result ? result : IDCANCEL;
    }

private:
    static UINT_PTR CALLBACK hook(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_INITDIALOG) {
            const LPARAM object = reinterpret_cast<OPENFILENAMEW*>(lParam)->lCustData;
            ::SetWindowLongPtrW(window, DWLP_USER, object);
        }
        OwnLoop* self = reinterpret_cast<OwnLoop*>(::GetWindowLongPtrW(window, DWLP_USER));
        if (!self)
            return 0;
        self->hookRan = true;
        return self->m_oldHook(window, message, wParam, lParam);
    }
    LPOFNHOOKPROC m_oldHook = nullptr;
};

TEST_F(FileDialog, ADerivedClassMayRunTheCallItself)
{
    OwnLoop dialog;
    const CString initial = folder;
    dialog.GetOFN().lpstrInitialDir = initial;
    Driver driver({[&] {
        const HWND window = ready(dialog);
        if (!window)
            return false;
        chooseType(window, 1);
        chooseType(window, 0);
        ::SetWindowTextW(nameBox(window), scan);
        ::PostMessageW(window, WM_COMMAND, IDOK, 0);
        return true;
    }});
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_TRUE(dialog.hookRan);
    EXPECT_EQ(dialog.heard, L"init type2 type1 ok ");
    EXPECT_EQ(dialog.GetPathName().CompareNoCase(scan), 0);
}

} // namespace
