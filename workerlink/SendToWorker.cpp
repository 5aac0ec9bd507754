#include "workerlink/SendToWorker.h"

#include <vector>

#include "workerlink/LinkLimits.h"
#include "workerlink/RunWorker.h"
#include "workerlink/SerializeMessage.h"

namespace {

CString g_strWorkerPath;

constexpr int attempts = 2;

} // namespace

void SetWorkerPath(const CString& path)
{
    g_strWorkerPath = path;
}

const CString& GetWorkerPath()
{
    return g_strWorkerPath;
}

bool SendToWorker(WorkerMessage& message)
{
    const std::vector<BYTE> request = SerializeMessage(message);
    const CString& workerPath = GetWorkerPath();
    const DWORD begun = GetTickCount();
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const WorkerRunResult result = RunWorker(workerPath, request.data(), static_cast<DWORD>(request.size()));
        if (result.ok && result.reply != nullptr) {
            DeserializeMessage(message, result.reply, result.replySize);
            return true;
        }
        // The difference survives the wrap of the tick count.
        if (GetTickCount() - begun > CurrentLinkLimits().secondAttempt)
            return false;
    }
    return false;
}
