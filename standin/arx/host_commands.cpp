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

// The command's own lock on the document, for as long as it runs; the drawing may be closed meanwhile.
class CommandLock
{
public:
    explicit CommandLock(AcAp::DocLockMode mode) : m_document(documentManager().current())
    {
        if (m_document)
            m_document->commandLocks.push_back(mode);
    }
    ~CommandLock()
    {
        if (m_document && m_document == documentManager().current() && !m_document->commandLocks.empty())
            m_document->commandLocks.pop_back();
    }
    CommandLock(const CommandLock&) = delete;
    CommandLock& operator=(const CommandLock&) = delete;

private:
    OpenDocument* m_document;
};

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

} // namespace

namespace {

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
    if (OpenDocument* document = documentManager().current())
        document->commandLocks.push_back(AcAp::kWrite);
    announceStart(upperCase(name));
}

void endDeskCommand(const std::wstring& name, CommandOutcome outcome)
{
    OpenDocument* document = documentManager().current();
    if (document && !document->commandLocks.empty())
        document->commandLocks.pop_back();
    announceOutcome(upperCase(name), outcome);
}

} // namespace standin
