#include "module/commands/CommandTable.h"

#include "module/commands/DialogCommands.h"
#include "module/commands/EditCommands.h"
#include "module/commands/InsertRasterCommand.h"
#include "module/commands/NewRasterCommand.h"
#include "module/commands/RasterizeCommand.h"
#include "module/commands/RotateCommand.h"
#include "module/commands/SaveCommand.h"
#include "module/commands/ShellCommands.h"
#include "module/commands/ToolCommands.h"

namespace {

constexpr const wchar_t* commandGroup = L"HVA6";
constexpr Adesk::Int32 commandFlags = ACRX_CMD_MODAL | ACRX_CMD_REDRAW | ACRX_CMD_NOPERSPECTIVE | ACRX_CMD_NOPAPERSPACE;

constexpr CommandRow commandTable[] = {
    {L"HALVORAN", ShowToolbarCommand},      //
    {L"HV6", ShowToolbarCommand},           //
    {L"ORVO_PROP", SettingsCommand},        //
    {L"ORVO_ABOUT", AboutCommand},          //
    {L"ORVO_NEW", NewRasterCommand},        //
    {L"ORVO_OPEN", InsertRasterCommand},    //
    {L"ORVO_SAVEAS", SaveAsCommand},        //
    {L"ORVO_SELRAS", SelectRasterCommand},  //
    {L"ORVO_SELAREA", SelectAreaCommand},   //
    {L"ORVO_RASPEN", PenCommand},           //
    {L"ORVO_RASLINE", LineCommand},         //
    {L"ORVO_RASERAS", EraserCommand},       //
    {L"ORVO_INVERT", InvertCommand},        //
    {L"ORVO_FLIPH", FlipHorizontalCommand}, //
    {L"ORVO_FLIPV", FlipVerticalCommand},   //
    {L"ORVO_DESPEC", DespeckleCommand},     //
    {L"ORVO_FILL", FillCommand},            //
    {L"ORVO_CROP", CropCommand},            //
    {L"ORVO_CHANGE", ChangeRasterCommand},  //
    {L"ORVO_RASPROP", PropertiesCommand},   //
    {L"ORVO_ROTATE", RotateCommand},        //
    {L"ORVO_RASTERIZE", RasterizeCommand},
};

} // namespace

std::span<const CommandRow> CommandTable()
{
    return commandTable;
}

void RegisterCommands(AcadAppInfo& application)
{
    for (const CommandRow& row : commandTable) {
        if (AcEdCommandStack* commands = acedRegCmds)
            commands->addCommand(commandGroup, row.name, row.name, commandFlags, row.handler, nullptr, -1, nullptr);
        application.writeCommandNameToRegistry(row.name, row.name);
    }
}

void RemoveCommands()
{
    if (AcEdCommandStack* commands = acedRegCmds)
        commands->removeGroup(commandGroup);
}
