#include "module/tools/CRasSelectTool.h"

#include <memory>

#include "module/base/CArxApp.h"
#include "module/base/CTempMFC.h"
#include "module/base/RedrawView.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"

IMPLEMENT_DYNAMIC(CRasSelectTool, CTool)

namespace {

constexpr int longestTip = 32767; // pixels and milliseconds alike: the most that the control takes
constexpr int tipDelay = 200;     // ms
constexpr int oneBitDepth = 1;

} // namespace

CRasSelectTool::~CRasSelectTool()
{
    EndStarted();
}

int CRasSelectTool::Start()
{
    // The monitor may not have come to it yet since the drawing changed, and the user sees no raster to let go of here.
    DropRasterOfOtherDrawing();
    if (g_pArxApp->m_pRaster) {
        DropCurrentRaster();
        RedrawView(m_pView);
        return 0;
    }
    CreateToolTip();
    CollectImages();
    m_bStarted = true;
    m_bDone = false;
    return 1;
}

void CRasSelectTool::Stop()
{
    CTool::Stop();
    // A drawing without images gave no set.
    if (m_selectionSet[0] || m_selectionSet[1])
        acedSSFree(m_selectionSet);
}

int CRasSelectTool::ToolId()
{
    return ToolIdSelectRaster;
}

void CRasSelectTool::UpdateCursor()
{
    const CTempMFC resources;
    SetToolCursor(IDC_SELECT_RASTER);
}

void CRasSelectTool::CreateToolTip()
{
    m_toolTip.Create(m_pView, TTS_ALWAYSTIP);
    m_toolTip.AddTool(m_pView, L"");
    m_toolTip.SetMaxTipWidth(longestTip);
    m_toolTip.SetDelayTime(TTDT_AUTOPOP, longestTip);
    m_toolTip.SetDelayTime(TTDT_INITIAL, tipDelay);
    m_toolTip.SetDelayTime(TTDT_RESHOW, tipDelay);
    m_toolTip.Activate(TRUE);
}

void CRasSelectTool::CollectImages()
{
    // Those of the space that is shown: an image of a layout has no place in the view.
    constexpr int spaceCode = 67; // in drawing files: 0 for the model, 1 for paper
    const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    const int paper = database && !database->tilemode() ? 1 : 0;
    resbuf* filter = acutBuildList(RTDXF0, L"IMAGE", spaceCode, paper, RTNONE);
    if (acedSSGet(L"X", nullptr, nullptr, filter, m_selectionSet) != RTERROR) {
        Adesk::Int32 count = 0;
        acedSSLength(m_selectionSet, &count);
        for (Adesk::Int32 index = 0; index < count; ++index) {
            ads_name entity = {};
            acedSSName(m_selectionSet, index, entity);
            CAcraster raster(entity);
            // An image that can't be opened keeps its place in the row, and is never hit.
            if (!raster.HasImage()) {
                m_candidates.emplace_back();
            } else {
                m_candidates.push_back(
                    {raster.GetViewRect(), raster.GetFileName(), raster.GetColorDepth() == oneBitDepth});
            }
        }
    }
    acutRelRb(filter);
}

void CRasSelectTool::MakeCurrent(size_t index)
{
    ads_name entity = {};
    acedSSName(m_selectionSet, static_cast<Adesk::Int32>(index), entity);
    auto raster = std::make_unique<CAcraster>(entity);
    // Erased since the tool started. Nothing of it is open, and Lock would not tell whoever uses it.
    if (!raster->HasImage())
        return;
    g_pArxApp->m_pRaster = raster.release();
    g_pArxApp->m_pRaster->Unlock();
    g_pArxApp->m_pRaster->KeepLoaded();
}

int CRasSelectTool::OnLButtonDown(CPoint point, UINT)
{
    // To the end of the row, so that the last of several images under the point is taken. One that was taken on the way
    // is left alone: ending it would unload an image that both may share.
    for (size_t index = 0; index < m_candidates.size(); ++index) {
        const Candidate& candidate = m_candidates[index];
        if (candidate.frame.PtInRect(point) && candidate.oneBit && !(candidate.name == L"File not found"))
            MakeCurrent(index);
    }
    m_bDone = true;
    return 1;
}

int CRasSelectTool::OnLButtonUp(CPoint, UINT)
{
    // The release of the click that started the tool comes with nothing done yet.
    return !m_bDone;
}

int CRasSelectTool::OnMouseMove(CPoint point, UINT)
{
    CString text;
    for (const Candidate& candidate : m_candidates) {
        if (!candidate.frame.PtInRect(point))
            continue;
        text = candidate.oneBit ? candidate.name
                                : CString(L"Halvoran in AutoCAD only works with 1-bit(black/white) images");
        break;
    }
    m_toolTip.UpdateTipText(text, m_pView);
    return 1;
}

int CRasSelectTool::PreMessage(MSG* message)
{
    m_toolTip.RelayEvent(message);
    return 0;
}
