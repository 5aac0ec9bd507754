// Plays the other end of the link in the tests, one step after the other; see child_report.h.

#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "child_report.h"
#include "workerlink/CMemMap.h"
#include "workerlink/CMemMapSemaphore.h"

namespace {

class Child
{
public:
    Child(DWORD number, child::Report& report, DWORD parent)
        : m_number(number), m_index(InterlockedIncrement(&report.starts) - 1),
          m_start(report.start[m_index < child::mostStarts ? m_index : child::mostStarts - 1])
    {
        m_start.transferNumber = number;
        lstrcpynW(m_start.commandLine, GetCommandLineW(), ARRAYSIZE(m_start.commandLine));
        STARTUPINFOW startup = {};
        GetStartupInfoW(&startup);
        m_start.startupFlags = startup.dwFlags;
        m_start.showWindow = startup.wShowWindow;
        if (startup.lpDesktop != nullptr)
            lstrcpynW(m_start.desktop, startup.lpDesktop, ARRAYSIZE(m_start.desktop));
        const HANDLE parentProcess = OpenProcess(PROCESS_DUP_HANDLE, FALSE, parent);
        HANDLE own = nullptr;
        DuplicateHandle(GetCurrentProcess(), GetCurrentProcess(), parentProcess, &own, PROCESS_ALL_ACCESS, FALSE, 0);
        m_start.process = reinterpret_cast<UINT64>(own);
        CloseHandle(parentProcess);
    }

    void take(const std::string& step)
    {
        const auto colon = step.find(':');
        const std::string name = step.substr(0, colon);
        const std::string argument = colon == std::string::npos ? "" : step.substr(colon + 1);
        if (name == "read")
            read();
        else if (name == "working" || name == "ok" || name == "ready")
            signal(name);
        else if (name == "reply")
            reply(argument);
        else if (name == "finish")
            WaitForSingleObject(m_watch, INFINITE);
        else if (name == "linger")
            linger();
        else if (name == "sleep")
            Sleep(std::stoul(argument));
        else if (name == "unless-first")
            leaveIfFirst();
        else if (name == "quit")
            waitForQuit();
        else if (name == "hang")
            Sleep(INFINITE);
        else if (name == "kill")
            TerminateProcess(GetCurrentProcess(), 9);
        else
            std::exit(99);
    }

private:
    void read()
    {
        const CMemMap block(m_number, L"");
        if (block.data == nullptr)
            return;
        m_block.assign(block.data, block.data + block.size);
        m_start.received = TRUE;
        m_start.receivedSize = block.size;
        for (DWORD i = 0; i < block.size && i < child::mostBytes; ++i)
            m_start.receivedBytes[i] = block.data[i];
    }

    std::wstring semaphoreName(const char* prefix) const
    {
        return std::wstring(prefix, prefix + std::strlen(prefix)) + std::to_wstring(m_number);
    }

    // All three are kept open from the first one on, so that they can be signalled however late.
    void signal(const std::string& name)
    {
        if (m_handshake.empty()) {
            m_handshake["working"].Open(semaphoreName("WORKING_").c_str(), false);
            m_handshake["ok"].Open(semaphoreName("OK_").c_str(), false);
            m_handshake["ready"].Open(semaphoreName("READY_").c_str(), false);
        }
        m_handshake[name].Signal();
    }

    void reply(const std::string& kind)
    {
        std::vector<BYTE> bytes = m_block;
        if (kind == "cut")
            bytes.pop_back();
        else if (!kind.empty()) { // code:N
            const DWORD code = std::stoul(kind.substr(kind.find(':') + 1));
            bytes.assign(reinterpret_cast<const BYTE*>(&code), reinterpret_cast<const BYTE*>(&code) + sizeof(code));
        }
        m_published = std::make_unique<CMemMap>(bytes.data(), static_cast<DWORD>(bytes.size()),
                                                std::to_wstring(m_number).c_str());
        DuplicateHandle(GetCurrentProcess(), m_published->thread, GetCurrentProcess(), &m_watch, SYNCHRONIZE, FALSE, 0);
    }

    void linger()
    {
        m_handshake.clear();
        CMemMapSemaphore ready;
        while (ready.Open(semaphoreName("READY_").c_str(), false)) {
            ready.Close();
            Sleep(5);
        }
    }

    void leaveIfFirst() const
    {
        if (m_index == 0)
            TerminateProcess(GetCurrentProcess(), 7);
    }

    void waitForQuit()
    {
        MSG message = {};
        while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        }
        std::exit(40 + static_cast<int>(message.wParam));
    }

    DWORD m_number;
    LONG m_index;
    child::Start& m_start;
    std::map<std::string, CMemMapSemaphore> m_handshake;
    std::vector<BYTE> m_block;
    std::unique_ptr<CMemMap> m_published;
    HANDLE m_watch = nullptr;
};

std::wstring environment(const wchar_t* name)
{
    wchar_t text[1000] = {};
    GetEnvironmentVariableW(name, text, ARRAYSIZE(text));
    return text;
}

} // namespace

int wmain(int argumentCount, wchar_t** arguments)
{
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE); // makes the queue that WM_QUIT comes to
    const DWORD parent = std::wcstoul(environment(child::parentVariable).c_str(), nullptr, 10);
    wchar_t name[64];
    child::reportName(name, parent);
    const HANDLE mapping = OpenFileMappingW(FILE_MAP_WRITE, FALSE, name);
    void* view = MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, sizeof(child::Report));
    if (view == nullptr || argumentCount != 2)
        return 98;
    Child child(std::wcstoul(arguments[1], nullptr, 10), *static_cast<child::Report*>(view), parent);
    const std::wstring wide = environment(child::stepsVariable);
    std::istringstream steps(std::string(wide.begin(), wide.end()));
    for (std::string step; steps >> step;)
        child.take(step);
    return 0;
}
