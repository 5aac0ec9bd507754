#include "module/dialogs/CDrotate.h"

#include "module/dialogs/FreePictures.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"

BEGIN_MESSAGE_MAP(CDrotate, CDialog)
ON_WM_DESTROY()
END_MESSAGE_MAP()

CDrotate::CDrotate() : CDialog(IDD_ROTATE) {}

void CDrotate::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    DDX_Radio(exchange, IDC_ROTATE_MODE, m_nMode);
    DDX_Check(exchange, IDC_ROTATE_ONLY_SELECTION, m_bOnlySelection);
}

BOOL CDrotate::OnInitDialog()
{
    {
        const CCurentRaster current;
        m_bOnlySelection = current.m_pRaster ? current.m_pRaster->HasSelection() : 0;
    }
    CDialog::OnInitDialog();
    GetDlgItem(IDC_ROTATE_ONLY_SELECTION)->EnableWindow(m_bOnlySelection);
    return TRUE;
}

void CDrotate::OnDestroy()
{
    FreePictures(*this);
    CDialog::OnDestroy();
}
