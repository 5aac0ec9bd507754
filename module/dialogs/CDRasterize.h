#pragma once

#include <memory>

#include "module/raster/CPenList.h"
#include "platform/platform.h"

/// "Rasterizing": the line width for each colour index.
class CDRasterize : public CDialog
{
public:
    CDRasterize();
    ~CDRasterize() override;

    CPenList& Pens() { return *m_pPens; }

    /// Set by the caller if there is a selection. Only shown: the job always goes by the region.
    int m_bOnlySelection = 0;

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;

    void OnToFile();
    void OnFromFile();
    void OnSave();
    void OnListKey(NMHDR* header, LRESULT* result);
    void OnLabelEdited(NMHDR* header, LRESULT* result);
    DECLARE_MESSAGE_MAP()

private:
    void FillList();
    void ShowWidths();
    void EnableSave(bool enable);

    std::unique_ptr<CPenList> m_pPens;
    CImageList m_swatches;
    CListCtrl m_list;
};
