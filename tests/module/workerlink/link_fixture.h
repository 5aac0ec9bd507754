#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "child/child_report.h"
#include "workerlink/LinkLimits.h"
#include "workerlink/WorkerProcess.h"

/// Both ends of the link: the test program on one, children that take the steps a test gives them on the other. Each
/// test has a temporary folder of its own, the children's too, which has to be empty at its end.
class LinkTest : public testing::Test
{
protected:
    LinkTest();
    ~LinkTest() override;

    /// What every child started from here on does.
    void childrenTake(const wchar_t* steps);
    static CString childPath();

    /// Starts a child with a number of the test's own choice; it has reported when this returns.
    std::unique_ptr<WorkerRunResult> startChild(DWORD number);

    LONG starts() const { return m_report->starts; }
    const child::Start& start(int index) const { return m_report->start[index]; }
    HANDLE process(int index) const { return reinterpret_cast<HANDLE>(m_report->start[index].process); }

    /// Waits for the child's end; its exit code.
    DWORD exitCode(int index) const;

    /// Waits until no object of the number is left, and fails when one stays. Watch threads let go at their own pace.
    static void expectNothingLeft(DWORD number);
    /// The same for all children so far, and for their processes.
    void expectNothingLeftOfAnyRun() const;

    /// The names of the objects that stand under the number at this moment.
    static std::set<std::wstring> objectsOf(DWORD number);

private:
    void useOwnTemporaryFolder();

    LinkLimits m_shipped;
    std::wstring m_usualTemporaryFolder;
    std::wstring m_temporaryFolder;
    HANDLE m_mapping;
    child::Report* m_report;
};

std::vector<BYTE> countingBytes(size_t count);
/// A path of the build as a program under Windows names it.
CString programPath(const char* path);
