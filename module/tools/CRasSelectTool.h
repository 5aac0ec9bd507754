#pragma once

#include <vector>

#include "module/tools/CTool.h"

/// The user points at one of the drawing's images, which becomes the current raster. Started with a raster current, it
/// only deselects that. What it knows of the images is what the drawing showed when it started.
class CRasSelectTool : public CTool
{
    DECLARE_DYNAMIC(CRasSelectTool)

public:
    CRasSelectTool() = default;
    ~CRasSelectTool() override;

    int Start() override;
    void Stop() override;
    int ToolId() override;
    void UpdateCursor() override;
    int OnLButtonDown(CPoint point, UINT flags) override;
    int OnLButtonUp(CPoint point, UINT flags) override;
    int OnMouseMove(CPoint point, UINT flags) override;
    int PreMessage(MSG* message) override;

private:
    struct Candidate
    {
        CRect frame; // in view space
        CString name;
        bool oneBit = false;
    };

    void CreateToolTip();
    void CollectImages();
    void MakeCurrent(size_t index);

    bool m_bDone = false; // a click has come, and its release ends the tool
    CToolTipCtrl m_toolTip;
    ads_name m_selectionSet = {};        // all images of the drawing
    std::vector<Candidate> m_candidates; // in step with the selection set
};
