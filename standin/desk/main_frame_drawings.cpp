// The frame and the drawings that are open: windows, titles, tabs and the list in the menu.

#include "standin/desk/frame_lists.h"
#include "standin/desk/main_frame.h"

namespace desk {
namespace {

const wchar_t* const programName = L"Halvoran Desk";

} // namespace

void MainFrame::showDrawingWindow(standin::DrawingId drawing)
{
    m_drawingWindows.show(drawing);
}

void MainFrame::closeDrawingWindow(standin::DrawingId drawing)
{
    m_drawingWindows.close(drawing);
}

// A changed drawing has a star behind its name.
std::wstring MainFrame::titleOf(standin::DrawingId drawing) const
{
    const auto path = standin::drawingPath(drawing);
    return (path.empty() ? L"Untitled" : path.filename().wstring()) + (m_editor.modified(drawing) ? L"*" : L"");
}

void MainFrame::showDrawingNames()
{
    const standin::DrawingId active = standin::activeDrawing();
    const std::wstring title = active != 0 ? titleOf(active) + L" - " + programName : programName;
    CString present;
    GetWindowText(present);
    if (title != static_cast<const wchar_t*>(present))
        SetWindowText(title.c_str());
    std::vector<DocumentTab> tabs;
    for (const standin::DrawingId drawing : standin::openDrawings())
        tabs.push_back({drawing, titleOf(drawing)});
    if (m_tabs.show(std::move(tabs), active))
        RecalcLayout();
}

// By a command, which asks and which modules hear of; what runs is cancelled first.
void MainFrame::closeLater(standin::DrawingId drawing)
{
    m_editor.showDrawing(drawing);
    if (standin::activeDrawing() == drawing)
        typeCommand(L"close ");
}

void MainFrame::fillMenuLists(HMENU popup)
{
    std::vector<std::wstring> titles;
    for (const standin::DrawingId drawing : standin::openDrawings())
        titles.push_back(titleOf(drawing));
    fillMenuList(popup, drawingList, titles, L"(no drawing is open)");
    std::vector<std::wstring> files;
    for (const std::filesystem::path& file : m_files.recent().files())
        files.push_back(file.wstring());
    fillMenuList(popup, recentList, files, L"(no recent drawings)");
}

void MainFrame::chooseListed(UINT id)
{
    const auto drawings = standin::openDrawings();
    if (const auto drawing = drawingList.indexOf(id); drawing && *drawing < drawings.size())
        m_editor.showDrawing(drawings[*drawing]);
    if (const auto file = recentList.indexOf(id))
        m_files.openRecent(*file);
}

void MainFrame::updateListed(CCmdUI& item)
{
    const auto drawings = standin::openDrawings();
    if (const auto index = drawingList.indexOf(item.m_nID)) {
        item.Enable(!drawings.empty());
        item.SetCheck(*index < drawings.size() && drawings[*index] == standin::activeDrawing() ? 1 : 0);
    }
    if (recentList.indexOf(item.m_nID))
        item.Enable(!m_files.recent().files().empty());
}

} // namespace desk
