// A small module for the tests of loading: command SAMPLE, an editor reactor from the first drawing on.
#include <string>

#include "standin/arx/arx.h"

namespace {

std::wstring journal;
AcRx::AppMsgCode refused = AcRx::kNullMsg;
bool keepCommands = false;

void note(const wchar_t* text)
{
    journal.append(text).append(L" ");
}

class Reactor final : public AcEditorReactor2
{
public:
    Reactor() { acedEditor->addReactor(this); }
    ~Reactor() override { acedEditor->removeReactor(this); }
    void databaseConstructed(AcDbDatabase*) override { note(L"constructed"); }
    void databaseToBeDestroyed(AcDbDatabase*) override { note(L"destroyed"); }
    void beginSave(AcDbDatabase*, const ACHAR*) override { note(L"beginSave"); }
    void saveComplete(AcDbDatabase*, const ACHAR*) override { note(L"saveComplete"); }
    void abortSave(AcDbDatabase*) override { note(L"abortSave"); }
    void commandWillStart(const ACHAR* name) override { note((std::wstring(L">") + name).c_str()); }
    void commandEnded(const ACHAR* name) override { note((std::wstring(L"<") + name).c_str()); }
    void commandFailed(const ACHAR* name) override { note((std::wstring(L"!") + name).c_str()); }
};

Reactor* reactor = nullptr;

void sampleCommand()
{
    note(L"run");
}

} // namespace

extern "C" const wchar_t* sampleJournal()
{
    return journal.c_str();
}
extern "C" void sampleRefuse(int message)
{
    refused = AcRx::AppMsgCode(message);
}
extern "C" void sampleKeepCommands(int keep)
{
    keepCommands = keep != 0;
}

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* applicationId)
{
    if (message == refused)
        return AcRx::kRetError;
    switch (message) {
    case AcRx::kInitAppMsg:
        note(L"init");
        acrxUnlockApplication(applicationId);
        acrxRegisterAppMDIAware(applicationId);
        acedRegCmds->addCommand(L"SAMPLE_GROUP", L"SAMPLE", L"MUSTER", ACRX_CMD_NOPAPERSPACE, sampleCommand);
        break;
    case AcRx::kUnloadAppMsg:
        note(L"unload");
        if (keepCommands)
            break;
        delete reactor;
        reactor = nullptr;
        acedRegCmds->removeGroup(L"SAMPLE_GROUP");
        break;
    case AcRx::kLoadDwgMsg:
        note(L"loadDwg");
        if (!reactor)
            reactor = new Reactor;
        break;
    case AcRx::kUnloadDwgMsg:
        note(L"unloadDwg");
        break;
    default:
        break;
    }
    return AcRx::kRetOK;
}
