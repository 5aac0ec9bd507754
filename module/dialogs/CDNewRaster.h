#pragma once

#include "module/dialogs/CPlacementDialog.h"

/// "Insert new raster": file, page and resolution of an empty raster, and its place.
class CDNewRaster : public CPlacementDialog
{
public:
    CDNewRaster();

    CString m_strFile;      // full path; OK needs one
    int m_nFilterIndex = 0; // of the chosen type: 0 TIFF, 1 CALS
    int m_nDpi = 300;

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void SetSize(double width, double height) override;

    void OnPageChosen();
    void OnPointLeft();
    void OnBrowse();
    DECLARE_MESSAGE_MAP()

private:
    int m_nPage; // row of PaperSizes
};
