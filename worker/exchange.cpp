#include "worker/exchange.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "worker/clipboard.h"
#include "worker/engine/operations.h"
#include "worker/record_conversion.h"
#include "worker/system_fonts.h"
#include "workerlink/CMemMap.h"
#include "workerlink/SerializeMessage.h"
#include "workerlink/WorkerHandshake.h"

namespace worker {

namespace {

// Does the request that the bytes hold. The reply's bytes, or nothing when it can't be done; the console says why.
std::vector<BYTE> answer(const CMemMap& requestBlock, CommitGate& gate)
{
    try {
        WorkerMessage record(0);
        DeserializeMessage(record, requestBlock.data, requestBlock.size);
        const Operation* operation = findOperation(record.operation);
        if (operation == nullptr) {
            std::fprintf(stderr, "There is no operation number %lu.\n", record.operation);
            return {};
        }
        Request request = requestFromRecord(record);
        SystemClipboard clipboard;
        SystemFonts fonts;
        operation->run(request, {gate, clipboard, &fonts});
        putResults(request, record);
        return SerializeMessage(record);
    } catch (CException* exception) {
        exception->Delete();
        std::fputs("The request can't be read.\n", stderr);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
    }
    return {};
}

// A published reply whose transfer can be waited for.
class PublishedReply
{
public:
    PublishedReply(const std::vector<BYTE>& bytes, DWORD number)
        : m_block(bytes.data(), static_cast<DWORD>(bytes.size()), std::to_wstring(number).c_str())
    {
        // The channel's own handle closes with its thread. No reader comes before READY, so the thread still runs.
        const HANDLE process = GetCurrentProcess();
        if (m_block.thread != nullptr)
            DuplicateHandle(process, m_block.thread, process, &m_watch, SYNCHRONIZE, FALSE, 0);
    }
    ~PublishedReply()
    {
        if (m_watch != nullptr)
            CloseHandle(m_watch);
    }
    PublishedReply(const PublishedReply&) = delete;
    PublishedReply& operator=(const PublishedReply&) = delete;

    bool published() const { return m_watch != nullptr; }
    // Ends by itself: the reader takes the block, or its time runs out.
    void waitForTransfer() const { WaitForSingleObject(m_watch, INFINITE); }

private:
    CMemMap m_block;
    HANDLE m_watch = nullptr;
};

// Stays until the module has let go of READY, or has gone, so that it sees the answer and not a process that ended.
void waitUntilSeen(CMemMapSemaphore& ready)
{
    constexpr DWORD pause = 20;
    constexpr int looks = 500; // ten seconds, a hundred times the module's own pace
    const CString name(ready.name);
    ready.Close();
    for (int look = 0; look < looks; ++look) {
        CMemMapSemaphore again;
        if (!again.Open(name, false))
            return;
        again.Close();
        Sleep(pause);
    }
}

} // namespace

int serveExchange(DWORD transferNumber, CommitGate& gate)
{
    const CMemMap requestBlock(transferNumber, L"");
    WorkerHandshake handshake(transferNumber, false);
    if (!handshake.complete) {
        std::fprintf(stderr, "No program waits for request %lu.\n", transferNumber);
        return ExitNoModule;
    }
    handshake.working.Signal();
    const std::vector<BYTE> replyBytes =
        requestBlock.data != nullptr ? answer(requestBlock, gate) : std::vector<BYTE>();
    const PublishedReply reply(replyBytes, transferNumber);
    if (!reply.published()) {
        handshake.ready.Signal();
        waitUntilSeen(handshake.ready);
        return ExitRefused;
    }
    // OK first: the module looks at it once, right after READY.
    handshake.ok.Signal();
    handshake.ready.Signal();
    reply.waitForTransfer();
    return ExitDone;
}

} // namespace worker
