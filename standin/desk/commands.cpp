#include "standin/desk/commands.h"

#include "standin/text.h"

namespace desk {
namespace {

constexpr DeskCommand table[] = {
    {L"NEW", L"", commands::newDrawing, false, L"Begins a new drawing"},
    {L"OPEN", L"", commands::openDrawing, false, L"Opens a drawing"},
    {L"-OPEN", L"", commands::openNamed, false, L"Opens a drawing whose path is typed"},
    {L"CLOSE", L"", commands::closeDrawing, true, L"Closes the drawing"},
    {L"CLOSEALL", L"", commands::closeAllDrawings, true, L"Closes all drawings"},
    {L"SAVE", L"QSAVE", commands::save, true, L"Saves the drawing"},
    {L"SAVEAS", L"", commands::saveAs, true, L"Saves the drawing under another name"},
    {L"-SAVEAS", L"", commands::saveNamed, true, L"Saves the drawing under a path that is typed"},
    {L"QUIT", L"EXIT", commands::quit, false, L"Ends the program"},
    {L"ARX", L"", commands::arx, false, L"Loads, unloads or lists modules"},
    {L"APPLOAD", L"AP", commands::loadModule, false, L"Loads a module chosen in a dialog"},
    {L"HELP", L"?", commands::help, false, L"Shows this help"},
    {L"ZOOM", L"Z", commands::zoom, true, L"Magnifies or reduces the view"},
    {L"PAN", L"P", commands::pan, true, L"Moves the view"},
    {L"REGEN", L"RE", commands::regen, true, L"Draws everything anew"},
    {L"MODEL", L"", commands::model, true, L"Goes to the model space"},
    {L"LAYOUT", L"LO", commands::layout, true, L"Goes to the paper space layout"},
    {L"FRAMETIMES", L"", commands::frameTimes, true, L"Tells how long paintings took since it was last asked"},
    {L"LINE", L"L", commands::line, true, L"Draws lines"},
    {L"PLINE", L"PL", commands::polyline, true, L"Draws a polyline"},
    {L"CIRCLE", L"C", commands::circle, true, L"Draws a circle"},
    {L"TEXT", L"DT", commands::text, true, L"Writes a line of text"},
    {L"-IMAGEATTACH", L"", commands::attachImage, true, L"Places a raster file whose path is typed"},
    {L"SELECT", L"", commands::select, true, L"Selects objects"},
    {L"ERASE", L"E", commands::erase, true, L"Erases objects"},
    {L"U", L"UNDO", commands::undo, true, L"Takes back the latest edit"},
    {L"REDO", L"", commands::redo, true, L"Does again what U took back"},
    {L"LIST", L"LI", commands::list, true, L"Lists the data of objects"},
    {L"ID", L"", commands::identifyPoint, true, L"Tells the coordinates of a point"},
};

} // namespace

std::span<const DeskCommand> deskCommands()
{
    return table;
}

const DeskCommand* findDeskCommand(const std::wstring& name)
{
    const auto start = name.find_first_not_of(L"_.'");
    if (start == std::wstring::npos)
        return nullptr;
    const std::wstring wanted = standin::upperCase(name.substr(start));
    for (const DeskCommand& command : table) {
        if (wanted == command.name || (!command.alias.empty() && wanted == command.alias))
            return &command;
    }
    return nullptr;
}

} // namespace desk
