// Running commands, with the events around them.
#include "standin/afx/afx_exception.h"
#include "standin/arx/acedads.h"
#include "standin/arx/application_list.h"
#include "standin/arx/command_stack.h"
#include "standin/arx/document_manager.h"
#include "standin/arx/editor.h"
#include "standin/arx/strictness.h"
#include "standin/arx/text.h"
#include "standin/host.h"

namespace standin {

namespace {

const Command* findCommand(const std::wstring& name)
{
    return static_cast<const Command*>(commandStack().lookupCmd(name.c_str()));
}

void announceStart(const std::wstring& name)
{
    editor().tell([&](AcEditorReactor& reactor) { reactor.commandWillStart(name.c_str()); });
}

void announceOutcome(const std::wstring& name, CommandOutcome outcome)
{
    editor().tell([&](AcEditorReactor& reactor) {
        switch (outcome) {
        case CommandOutcome::ended:
            reactor.commandEnded(name.c_str());
            break;
        case CommandOutcome::cancelled:
            reactor.commandCancelled(name.c_str());
            break;
        case CommandOutcome::failed:
            reactor.commandFailed(name.c_str());
            break;
        }
    });
}

// The class library's exceptions that a handler lets out end in a message to the user, as they do in the class library
// itself; any other is a fault of the module.
CommandOutcome runHandler(const Command& command)
{
    const std::string name = toUtf8(command.global);
    try {
        const CommandLock lock((command.flags & ACRX_CMD_SESSION) != 0 ? AcAp::kRead : AcAp::kWrite);
        command.function();
        return CommandOutcome::ended;
    } catch (CException* exception) {
        wchar_t message[512] = L"";
        if (exception->GetErrorMessage(message, 512))
            acedAlert(message);
        exception->Delete();
    } catch (const std::exception& failure) {
        recordBreach("An exception came out of the command " + name + ": " + failure.what());
    } catch (...) {
        recordBreach("An exception came out of the command " + name + '.');
    }
    return CommandOutcome::failed;
}

// One in another, as a desk command may be run within a desk command.
std::vector<std::unique_ptr<CommandLock>>& deskCommandLocks()
{
    static std::vector<std::unique_ptr<CommandLock>> locks;
    return locks;
}

} // namespace

bool hasModuleCommand(const std::wstring& name)
{
    if (findCommand(name))
        return true;
    const std::wstring bare = name.starts_with(L'_') ? name.substr(1) : name;
    const auto application = applicationForCommand(bare);
    return application && !loadModule(application->modulePath) && findCommand(name);
}

std::optional<CommandOutcome> runModuleCommand(const std::wstring& name)
{
    if (!hasModuleCommand(name))
        return std::nullopt;
    // A copy, as the command may remove itself.
    const Command command = *findCommand(name);
    const AcDbDatabase* database = drawingDatabase();
    if ((command.flags & ACRX_CMD_NOPAPERSPACE) != 0 && database && !database->tilemode()) {
        acedAlert((command.global + L" is not allowed in paper space.").c_str());
        return CommandOutcome::failed;
    }
    announceStart(command.global);
    const CommandOutcome outcome = runHandler(command);
    announceOutcome(command.global, outcome);
    return outcome;
}

void beginDeskCommand(const std::wstring& name)
{
    deskCommandLocks().push_back(std::make_unique<CommandLock>(AcAp::kWrite));
    announceStart(upperCase(name));
}

void endDeskCommand(const std::wstring& name, CommandOutcome outcome)
{
    deskCommandLocks().pop_back();
    announceOutcome(upperCase(name), outcome);
}

} // namespace standin
