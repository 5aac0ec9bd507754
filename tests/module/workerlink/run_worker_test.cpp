#include "link_fixture.h"
#include "workerlink/RunWorker.h"
#include "workerlink/SendToWorker.h"
#include "workerlink/SerializeMessage.h"

// The run of one worker, and the exchange with its two attempts, against workers that do as they please.

namespace {

class WorkerRun : public LinkTest
{
protected:
    WorkerRun()
    {
        SetWorkerPath(childPath());
        // Blocks that no child takes would keep the test waiting for half a minute.
        CurrentLinkLimits().publishedBlock = 5000;
    }

    WorkerRunResult run(const wchar_t* steps)
    {
        childrenTake(steps);
        return RunWorker(childPath(), request.data(), static_cast<DWORD>(request.size()));
    }

    // The text with the worker's path in it.
    static CString text(LPCWSTR format)
    {
        CString made;
        made.Format(format, static_cast<LPCWSTR>(childPath()));
        return made;
    }

    static std::vector<BYTE> replyOf(const WorkerRunResult& result)
    {
        return {result.reply, result.reply + result.replySize};
    }

    bool send(const wchar_t* steps)
    {
        childrenTake(steps);
        return SendToWorker(message);
    }

    const std::vector<BYTE> request = countingBytes(500);
    WorkerMessage message{OperationInvert};
};

// A request under way: what it asked for has to be told from what a reply put there.
constexpr wchar_t asked[] = L"C:\\asked.tif";

class Exchange : public WorkerRun
{
protected:
    Exchange() { message.invert.file = asked; }

    void expectUntouched() const
    {
        EXPECT_EQ(message.operation, static_cast<DWORD>(OperationInvert));
        EXPECT_EQ(message.invert.file, asked);
    }
};

} // namespace

TEST_F(WorkerRun, WhatAWorkerThatBeganToWorkTellsDecides)
{
    struct Case
    {
        const wchar_t* steps;
        bool ok;
        bool reply;
        const wchar_t* error;
    };
    const Case cases[] = {
        {L"read working reply ok ready finish", true, true, L""},
        {L"read working kill", false, false, L"The process '%s' ended premature"},
        {L"read working reply kill", false, false, L"The process '%s' ended premature"}, // no READY, no reading
        {L"read working reply ok kill", true, false, L""},
        {L"read working reply ready finish", false, true, L""},
        {L"read working ready linger", false, false, L""},
        // The transfer of the reply is over only after the module has tested OK, which it does once, right after READY.
        {L"read working reply ready finish ok", false, true, L""},
        {L"read working ok ready linger", true, false, L""},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(testing::PrintToString(row.steps));
        const WorkerRunResult result = run(row.steps);
        EXPECT_EQ(result.ok, row.ok);
        EXPECT_EQ(replyOf(result), row.reply ? request : std::vector<BYTE>());
        EXPECT_EQ(result.errorText, text(row.error));
        // The caller closes the handles of a worker that has not died.
        const bool died = std::wstring(row.steps).ends_with(L"kill");
        EXPECT_EQ(result.process == INVALID_HANDLE_VALUE, died);
        EXPECT_EQ(result.thread == INVALID_HANDLE_VALUE, died);
        EXPECT_EQ(result.processId, GetProcessId(process(starts() - 1)));
    }
    expectNothingLeftOfAnyRun();
}

TEST_F(WorkerRun, StartsTheWorkerHiddenOnTheUsersDesktopWithThePathInQuotesAndTheNumber)
{
    const WorkerRunResult result = run(L"read working ready linger");
    CString expected;
    expected.Format(L"\"%s\" %lu", static_cast<LPCWSTR>(childPath()), start(0).transferNumber);
    EXPECT_STREQ(start(0).commandLine, expected);
    EXPECT_GE(start(0).transferNumber, 0xFFFFu);
    EXPECT_STREQ(start(0).desktop, L"winsta0\\default");
    EXPECT_TRUE(start(0).startupFlags & STARTF_USESHOWWINDOW);
    EXPECT_EQ(start(0).showWindow, static_cast<DWORD>(SW_HIDE));
}

TEST_F(WorkerRun, AWorkerThatNeverSaysWorkingIsFoundOutAfterTheWholeTimeAndLeftAlone)
{
    struct Case
    {
        const wchar_t* steps;
        DWORD exitCode;
    };
    CurrentLinkLimits().workerStart = 1500;
    for (const Case& row : {Case{L"kill", 9}, Case{L"read hang", STILL_ACTIVE}}) {
        const DWORD begun = GetTickCount();
        const WorkerRunResult result = run(row.steps);
        EXPECT_GE(GetTickCount() - begun, 1500u) << "the end of the process is not looked at before WORKING";
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.reply, nullptr);
        EXPECT_EQ(result.errorText, text(L"The process '%s' never started up correctly"));
        if (row.exitCode != STILL_ACTIVE)
            WaitForSingleObject(result.process, INFINITE);
        DWORD code = 0;
        EXPECT_TRUE(GetExitCodeProcess(result.process, &code));
        EXPECT_EQ(code, row.exitCode);
        TerminateProcess(result.process, 0);
    }
    expectNothingLeftOfAnyRun();
}

TEST_F(WorkerRun, AWorkerThatIsLateIsAskedToLeaveAndKilledIfItDoesNot)
{
    struct Case
    {
        const wchar_t* steps;
        DWORD timeToLeave;
        DWORD exitCode;
    };
    CurrentLinkLimits().workerRun = 300;
    // WM_QUIT carries 1, to which the child adds 40.
    for (const Case& row : {Case{L"read working quit", 60000, 41}, Case{L"read working hang", 300, 1}}) {
        CurrentLinkLimits().workerLeave = row.timeToLeave;
        const WorkerRunResult result = run(row.steps);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.errorText, text(L"The process '%s' timed out"));
        EXPECT_EQ(result.process, INVALID_HANDLE_VALUE);
        EXPECT_EQ(exitCode(starts() - 1), row.exitCode);
    }
    expectNothingLeftOfAnyRun();
}

TEST_F(WorkerRun, AMissingProgramCannotBeStarted)
{
    const CString missing = childPath() + L".missing.exe";
    const WorkerRunResult result = RunWorker(missing, request.data(), static_cast<DWORD>(request.size()));
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.reply, nullptr);
    EXPECT_EQ(result.errorText, CString(L"Can't start '") + missing + L"'");
    EXPECT_EQ(result.process, INVALID_HANDLE_VALUE);
    WorkerRunResult unused;
    WorkerProcess process(unused);
    EXPECT_FALSE(process.Start(missing, 1));
    EXPECT_EQ(process.lastError, static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_FALSE(process.IsAlive());
}

TEST_F(WorkerRun, ARequestThatCannotBePublishedGoesUnderTheNumber0AndFails)
{
    childrenTake(L"read working ready linger");
    const WorkerRunResult result = RunWorker(childPath(), nullptr, 0);
    EXPECT_EQ(start(0).transferNumber, 0u);
    EXPECT_FALSE(start(0).received);
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.errorText, L"");
    expectNothingLeftOfAnyRun();
}

TEST_F(Exchange, AGoodReplyNeedsOneAttempt)
{
    EXPECT_TRUE(send(L"read working reply ok ready finish"));
    expectUntouched(); // the child echoes
    EXPECT_EQ(starts(), 1);
    const std::vector<BYTE> bytes = SerializeMessage(message);
    EXPECT_EQ(std::vector<BYTE>(start(0).receivedBytes, start(0).receivedBytes + start(0).receivedSize), bytes);
    expectNothingLeftOfAnyRun();
}

TEST_F(Exchange, AFastFailureIsTriedOnceMore)
{
    for (const wchar_t* steps :
         {L"read working kill", L"read working reply ready finish", L"read working ok ready linger"}) {
        const LONG before = starts();
        EXPECT_FALSE(send(steps));
        expectUntouched();
        EXPECT_EQ(starts() - before, 2);
    }
    EXPECT_NE(start(0).transferNumber, start(1).transferNumber) << "each attempt has a number of its own";
    expectNothingLeftOfAnyRun();
}

TEST_F(Exchange, TheSecondAttemptCanSucceed)
{
    EXPECT_TRUE(send(L"read working unless-first reply ok ready finish"));
    EXPECT_EQ(starts(), 2);
    EXPECT_EQ(exitCode(0), 7u);
    EXPECT_EQ(exitCode(1), 0u);
    expectNothingLeftOfAnyRun();
}

TEST_F(Exchange, ASlowFailureIsNotRepeated)
{
    CurrentLinkLimits().secondAttempt = 100;
    EXPECT_FALSE(send(L"read working sleep:300 kill"));
    EXPECT_EQ(starts(), 1);
    expectUntouched();
    expectNothingLeftOfAnyRun();
}

TEST_F(Exchange, AReplyThatIsCutShortRaisesEndOfFile)
{
    int cause = -1;
    try {
        send(L"read working reply:cut ok ready finish");
    } catch (CArchiveException* exception) {
        cause = exception->m_cause;
        exception->Delete();
    }
    EXPECT_EQ(cause, CArchiveException::endOfFile);
    EXPECT_EQ(starts(), 1) << "a broken reply is not asked for again";
    expectNothingLeftOfAnyRun();
}

TEST_F(Exchange, AForeignCodeInTheReplyIsTakenAsItComes)
{
    for (const DWORD code : {0u, 14u, 4000000000u}) {
        message.operation = OperationInvert;
        EXPECT_TRUE(send((L"read working reply:code:" + std::to_wstring(code) + L" ok ready finish").c_str()));
        EXPECT_EQ(message.operation, code);
        EXPECT_EQ(message.invert.file, asked);
    }
    expectNothingLeftOfAnyRun();
}
