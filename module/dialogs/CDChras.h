#pragma once

#include "platform/platform.h"

/// Changes the size and the resolution of the current raster: by itself, when it closes with OK.
class CDChras : public CDialog
{
public:
    CDChras();

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;

    void OnPageChosen();
    void OnFieldLeft();
    DECLARE_MESSAGE_MAP()

private:
    void ReadRaster();
    void ApplyLimits();
    bool IsUnchanged() const;
    void Change();

    CString m_strPage; // name of the page that the raster has now
    // Millimetres and dots per inch.
    double m_dCurrentWidth = 0;
    double m_dCurrentHeight = 0;
    int m_nCurrentDpi = 0;
    int m_nPage = -1; // row of PaperSizes
    double m_dWidth = 0;
    double m_dHeight = 0;
    int m_nDpi = 0;
};
