#pragma once

#include <memory>

#include "platform/platform.h"

class CDDBPalette;

/// The about box: the module's picture, and whose and which it is.
class CAboutDlg : public CDialog
{
public:
    CAboutDlg();
    ~CAboutDlg() override;

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;

    void OnPaint();
    DECLARE_MESSAGE_MAP()

private:
    void MakeRoomForPicture();

    CString m_strVersion;
    CString m_strProduct;
    CString m_strNotice;
    std::unique_ptr<CDDBPalette> m_pPicture;
};
