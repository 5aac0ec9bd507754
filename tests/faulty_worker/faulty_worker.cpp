// Stands in the place of HVV6.exe and fails as the plan says. The plan is a text file beside it with the extension
// .plan, one word for each run that is to come; a run takes the first line away. Without a plan or with an empty one
// every run goes well.
//
//   well          the real worker, HVV6-real.exe beside it, does the request
//   silent        ends before it says WORKING
//   dies          ends after WORKING
//   half-writes   leaves a beginning of the target file, then ends
//   writes        leaves the whole target file, then ends without a word
//   spoils        leaves a beginning of the target file and says that all went well
//   refuses       says READY without OK
//   hangs         says WORKING and nothing more

#include <windows.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
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

int runRealWorker(const wchar_t* number)
{
    const std::filesystem::path real = ownPath().replace_filename("HVV6-real.exe");
    std::wstring command = L"\"" + real.wstring() + L"\" " + number;
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process))
        return 99;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(code);
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
    if (argumentCount != 2)
        return 99;
    const wchar_t* number = arguments[1];
    const std::string fault = takeFromPlan();
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
