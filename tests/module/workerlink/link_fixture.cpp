#include "link_fixture.h"

#include "workerlink/MemMapNames.h"

namespace {

constexpr DWORD longEnough = 60000; // for any child to end that is going to end

} // namespace

std::vector<BYTE> countingBytes(size_t count)
{
    std::vector<BYTE> bytes(count);
    for (size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<BYTE>(i);
    return bytes;
}

CString programPath(const char* path)
{
    CString text(path);
    text.Replace(L'/', L'\\');
    return text.GetAt(0) == L'\\' ? CString(L"Z:") + text : text;
}

LinkTest::LinkTest() : m_shipped(CurrentLinkLimits())
{
    useOwnTemporaryFolder();
    wchar_t name[64];
    child::reportName(name, GetCurrentProcessId());
    m_mapping = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(child::Report), name);
    m_report = static_cast<child::Report*>(MapViewOfFile(m_mapping, FILE_MAP_WRITE, 0, 0, sizeof(child::Report)));
    SetEnvironmentVariableW(child::parentVariable, std::to_wstring(GetCurrentProcessId()).c_str());
    childrenTake(L"");
}

LinkTest::~LinkTest()
{
    CurrentLinkLimits() = m_shipped;
    for (LONG i = 0; i < m_report->starts && i < child::mostStarts; ++i) {
        // A child that a failed test left behind.
        TerminateProcess(process(i), 1);
        CloseHandle(process(i));
    }
    UnmapViewOfFile(m_report);
    CloseHandle(m_mapping);
    SetEnvironmentVariableW(L"TMP", m_usualTemporaryFolder.c_str());
    EXPECT_TRUE(RemoveDirectoryW(m_temporaryFolder.c_str())) << "something is left in the temporary folder";
}

void LinkTest::useOwnTemporaryFolder()
{
    static int number = 0;
    wchar_t usual[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, usual);
    m_usualTemporaryFolder = usual;
    m_temporaryFolder = m_usualTemporaryFolder + L"halvoran-link-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                        std::to_wstring(++number);
    CreateDirectoryW(m_temporaryFolder.c_str(), nullptr);
    SetEnvironmentVariableW(L"TMP", m_temporaryFolder.c_str());
}

void LinkTest::childrenTake(const wchar_t* steps)
{
    SetEnvironmentVariableW(child::stepsVariable, steps);
}

CString LinkTest::childPath()
{
    wchar_t own[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    const std::wstring path(own);
    return (path.substr(0, path.rfind(L'\\') + 1) + L"worker_test_child.exe").c_str();
}

std::unique_ptr<WorkerRunResult> LinkTest::startChild(DWORD number)
{
    const LONG index = starts();
    auto result = std::make_unique<WorkerRunResult>();
    WorkerProcess started(*result);
    EXPECT_TRUE(started.Start(childPath(), number)) << "the child did not start, error " << started.lastError;
    while (process(index) == nullptr && WaitForSingleObject(result->process, 5) == WAIT_TIMEOUT) {
    }
    return result;
}

DWORD LinkTest::exitCode(int index) const
{
    EXPECT_EQ(WaitForSingleObject(process(index), longEnough), WAIT_OBJECT_0) << "a child runs on";
    DWORD code = 0;
    GetExitCodeProcess(process(index), &code);
    return code;
}

std::set<std::wstring> LinkTest::objectsOf(DWORD number)
{
    std::set<std::wstring> found;
    const CString mapping = MappingName(number, L"");
    if (const HANDLE handle = OpenFileMappingW(FILE_MAP_READ, FALSE, mapping)) {
        CloseHandle(handle);
        found.insert(mapping.GetString());
    }
    const std::wstring digits = std::to_wstring(number);
    for (const std::wstring& name : {L"CMemMap_M_" + digits + L"S", L"CMemMap_S_" + digits, L"CMemMap_SEnd_" + digits,
                                     L"WORKING_" + digits, L"READY_" + digits, L"OK_" + digits}) {
        for (const std::wstring& each : {name, name + L"_LOCK"}) {
            if (const HANDLE handle = OpenSemaphoreW(SYNCHRONIZE, FALSE, each.c_str())) {
                CloseHandle(handle);
                found.insert(each);
            }
        }
    }
    return found;
}

void LinkTest::expectNothingLeft(DWORD number)
{
    const DWORD begun = GetTickCount();
    while (!objectsOf(number).empty()) {
        if (GetTickCount() - begun > longEnough) {
            std::string names;
            for (const std::wstring& name : objectsOf(number))
                names += std::string(name.begin(), name.end()) + " ";
            FAIL() << "left over: " << names;
        }
        Sleep(5);
    }
}

void LinkTest::expectNothingLeftOfAnyRun() const
{
    for (LONG i = 0; i < starts() && i < child::mostStarts; ++i) {
        exitCode(i);
        expectNothingLeft(start(i).transferNumber);
    }
}
