// A small module for the tests of loading: command SAMPLE, an editor reactor from the first drawing on; it leaves
// behind what it is told to.
#include <process.h>
#include <string>

#include "standin/afx/afx_thread.h"
#include "standin/arx/arx.h"

namespace {

std::wstring journal;
AcRx::AppMsgCode refused = AcRx::kNullMsg;
std::string kept; // what is not taken back at the unloading

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

struct ObjectReactor final : AcDbObjectReactor
{
} objectReactor;

UINT_PTR timer = 0;
HHOOK hook = nullptr;
ads_name set;
AcDbObject* object = nullptr;
HANDLE thread = nullptr;
HANDLE threadEnd = nullptr;
HMODULE held = nullptr; // by the thread

AcDbObjectId firstEntity()
{
    AcDbObjectId id;
    ads_name all;
    if (acedSSGet(L"X", nullptr, nullptr, nullptr, all) == RTNORM) {
        ads_name name;
        acedSSName(all, 0, name);
        acdbGetObjectId(id, name);
        acedSSFree(all);
    }
    return id;
}

DWORD waitInThread()
{
    WaitForSingleObject(threadEnd, INFINITE);
    if (held)
        FreeLibraryAndExitThread(held, 0);
    return 0;
}

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
extern "C" void sampleLeave(const char* what)
{
    kept = what;
    if (kept == "timer") {
        timer = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {});
    } else if (kept == "hook") {
        hook = SetWindowsHookExW(
            WH_GETMESSAGE, [](int code, WPARAM word, LPARAM data) { return CallNextHookEx(nullptr, code, word, data); },
            nullptr, GetCurrentThreadId());
    } else if (kept == "window class") {
        WNDCLASSW description{};
        description.lpszClassName = L"Sample";
        description.hInstance = GetModuleHandleW(L"sample_module.arx");
        description.lpfnWndProc = [](HWND window, UINT message, WPARAM word, LPARAM data) {
            return DefWindowProcW(window, message, word, data);
        };
        RegisterClassW(&description);
    } else if (kept == "lock") {
        acDocManager->lockDocument(acDocManager->curDocument());
    } else if (kept == "selection set") {
        acedSSGet(L"X", nullptr, nullptr, nullptr, set);
    } else if (kept == "open object") {
        acdbOpenObject(object, firstEntity());
    } else if (kept == "object reactor") {
        AcDbObject* watched = nullptr;
        acdbOpenObject(watched, firstEntity());
        watched->addReactor(&objectReactor);
        watched->close();
    } else if (kept == "reference") {
        HMODULE self = nullptr;
        GetModuleHandleExW(0, L"sample_module.arx", &self);
    }
}
extern "C" void sampleTakeBack()
{
    KillTimer(nullptr, timer);
    UnhookWindowsHookEx(hook);
    UnregisterClassW(L"Sample", GetModuleHandleW(L"sample_module.arx"));
    object->removeReactor(&objectReactor);
    object->close();
    acDocManager->unlockDocument(acDocManager->curDocument());
    acedSSFree(set);
    kept.clear();
}
extern "C" void sampleStartThread(const char* how, HANDLE end, int holding)
{
    threadEnd = end;
    held = nullptr;
    if (holding)
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(&journal), &held);
    const std::string way = how;
    if (way == "CreateThread") {
        thread = CreateThread(
            nullptr, 0, [](void*) -> DWORD { return waitInThread(); }, nullptr, 0, nullptr);
    } else if (way == "_beginthreadex") {
        thread = reinterpret_cast<HANDLE>(_beginthreadex(
            nullptr, 0, [](void*) -> unsigned { return waitInThread(); }, nullptr, 0, nullptr));
    } else {
        CWinThread* begun = AfxBeginThread([](void*) -> UINT { return waitInThread(); }, nullptr,
                                           THREAD_PRIORITY_NORMAL, 0, CREATE_SUSPENDED);
        DuplicateHandle(GetCurrentProcess(), begun->m_hThread, GetCurrentProcess(), &thread, 0, FALSE,
                        DUPLICATE_SAME_ACCESS);
        begun->ResumeThread();
    }
}
extern "C" HANDLE sampleThread()
{
    return thread;
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
        if (kept != "editor reactor")
            delete reactor;
        if (kept != "command")
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
