#pragma once

#include "platform/platform.h"

class CAcraster;

/// "Properties": facts about the current raster in a tree, as they were on opening. Changes nothing.
class CDProperties : public CDialog
{
public:
    CDProperties();

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;

private:
    HTREEITEM AddRow(HTREEITEM parent, const CString& text, int image);
    HTREEITEM AddGroup(HTREEITEM parent, UINT textId);
    void AddFileRows(HTREEITEM root, const CAcraster& raster);
    void AddDrawingSize(HTREEITEM root, const CAcraster& raster);
    void AddDocumentSize(HTREEITEM root, const CAcraster& raster);

    CTreeCtrl m_tree;
    CImageList m_images;
};
