// Stands in the place of HVV6.exe and fails as the plan says. The plan is a text file beside it with the extension
// .plan, one word for each run that is to come; a run takes the first line away. Without a plan or with an empty one
// every run goes well.
//
//   well          the real worker, HVV6-real.exe beside it, does the request
//   holds         first has another process hold the file that a format query asks about; then well
//   releases      first has that process let go of it; then well
//   protects      first marks the file that a format query asks about as write-protected; then well
//   unprotects    first takes that mark away; then well
//   removes       first removes the file that a format query asks about; then well
//   silent        ends before it says WORKING
//   dies          ends after WORKING
//   half-writes   leaves a beginning of the target file, then ends
//   writes        leaves the whole target file, then ends without a word
//   spoils        leaves a beginning of the target file and says that all went well
//   refuses       says READY without OK
//   hangs         says WORKING and nothing more

#include <windows.h>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "workerlink/CMemMap.h"
#include "workerlink/CMemMapSemaphore.h"
#include "workerlink/SerializeMessage.h"

namespace {

std::filesystem::path ownPath()
{
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return path;
}

std::string takeFromPlan()
{
    const std::filesystem::path plan = ownPath().replace_extension(".plan");
    std::string first;
    std::string rest;
    {
        std::ifstream file(plan);
        std::getline(file, first);
        for (std::string line; std::getline(file, line);)
            rest += line + "\n";
    }
    if (!first.empty())
        std::ofstream(plan) << rest;
    return first.empty() ? "well" : first;
}

// The handle of the process; null if it can't be started.
HANDLE start(const std::filesystem::path& program, const std::wstring& arguments)
{
    std::wstring command = L"\"" + program.wstring() + L"\" " + arguments;
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        return nullptr;
    CloseHandle(process.hThread);
    return process.hProcess;
}

int runRealWorker(const wchar_t* number)
{
    const HANDLE process = start(ownPath().replace_filename("HVV6-real.exe"), number);
    WaitForSingleObject(process, INFINITE);
    DWORD code = 99;
    GetExitCodeProcess(process, &code);
    CloseHandle(process);
    return static_cast<int>(code);
}

constexpr const wchar_t* holdOption = L"hold";

// Signalled by the process that holds a file, when it holds it, and to it, when it is to let go; and the process
// itself.
const HANDLE holding = CreateEventW(nullptr, FALSE, FALSE, L"HalvoranFileIsHeld");
const HANDLE letGo = CreateEventW(nullptr, FALSE, FALSE, L"HalvoranFileLetGo");
const HANDLE wasLetGo = CreateEventW(nullptr, FALSE, FALSE, L"HalvoranFileWasLetGo");

// For a minute at most, so that no session leaves it behind.
int hold(const wchar_t* path)
{
    constexpr DWORD longest = 60000;
    const HANDLE file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    SetEvent(holding);
    WaitForSingleObject(letGo, longest);
    CloseHandle(file);
    SetEvent(wasLetGo);
    return 0;
}

void signal(const wchar_t* name, const wchar_t* number)
{
    CMemMapSemaphore semaphore;
    semaphore.Open((std::wstring(name) + number).c_str(), false);
    semaphore.Signal();
}

void writeTarget(const WorkerMessage& request, bool whole)
{
    const std::filesystem::path source(request.convertFile.sourceFile.GetString());
    std::ifstream in(source, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (!whole)
        bytes.resize(bytes.size() / 2);
    std::ofstream(std::filesystem::path(request.convertFile.targetFile.GetString()), std::ios::binary) << bytes;
}

// Looks at the request without taking it from the real worker.
std::wstring fileOfQuery(const wchar_t* number)
{
    const HANDLE mapping = OpenFileMappingW(FILE_MAP_READ, FALSE, (std::wstring(L"CMemMap_M_") + number).c_str());
    const auto* block = static_cast<const BYTE*>(MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0));
    DWORD size = 0;
    std::memcpy(&size, block, sizeof(size));
    WorkerMessage request(0);
    DeserializeMessage(request, block + sizeof(size), size);
    UnmapViewOfFile(block);
    CloseHandle(mapping);
    return request.formatQuery.file.GetString();
}

void meddle(const std::string& how, const wchar_t* number)
{
    if (how == "releases") {
        SetEvent(letGo);
        WaitForSingleObject(wasLetGo, INFINITE);
        return;
    }
    const std::wstring file = fileOfQuery(number);
    if (how == "removes") {
        DeleteFileW(file.c_str());
        return;
    }
    if (how == "protects" || how == "unprotects") {
        SetFileAttributesW(file.c_str(), how == "protects" ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
        return;
    }
    CloseHandle(start(ownPath(), std::wstring(holdOption) + L" \"" + file + L"\""));
    WaitForSingleObject(holding, INFINITE);
}

void answerWell(const CMemMap& request, const wchar_t* number)
{
    const CMemMap reply(request.data, request.size, number);
    HANDLE transfer = nullptr;
    DuplicateHandle(GetCurrentProcess(), reply.thread, GetCurrentProcess(), &transfer, SYNCHRONIZE, FALSE, 0);
    signal(L"OK_", number);
    signal(L"READY_", number);
    WaitForSingleObject(transfer, INFINITE);
    CloseHandle(transfer);
}

} // namespace

int wmain(int argumentCount, wchar_t** arguments)
{
    if (argumentCount == 3 && std::wstring(arguments[1]) == holdOption)
        return hold(arguments[2]);
    if (argumentCount != 2)
        return 99;
    const wchar_t* number = arguments[1];
    const std::string fault = takeFromPlan();
    static const std::set<std::string> meddling = {"holds", "releases", "protects", "unprotects", "removes"};
    if (meddling.contains(fault)) {
        meddle(fault, number);
        return runRealWorker(number);
    }
    if (fault == "well")
        return runRealWorker(number);
    if (fault == "silent")
        return 1;
    const CMemMap block(std::wcstoul(number, nullptr, 10), L"");
    WorkerMessage request(0);
    DeserializeMessage(request, block.data, block.size);
    signal(L"WORKING_", number);
    if (fault == "half-writes" || fault == "writes" || fault == "spoils")
        writeTarget(request, fault == "writes");
    if (fault == "spoils")
        answerWell(block, number);
    if (fault == "refuses")
        signal(L"READY_", number);
    if (fault == "hangs")
        Sleep(INFINITE);
    return 1;
}
