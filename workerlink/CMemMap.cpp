#include "workerlink/CMemMap.h"

#include <cstring>
#include <limits>

#include "workerlink/CMemMapWatch.h"
#include "workerlink/LinkLimits.h"
#include "workerlink/MemMapNames.h"

namespace {

// The block's length stands before the block.
constexpr DWORD lengthSize = sizeof(DWORD);

// A handle that is closed at the end of its scope.
class ScopedHandle
{
public:
    explicit ScopedHandle(HANDLE handle) : m_hHandle(handle) {}
    ~ScopedHandle()
    {
        if (m_hHandle != nullptr)
            CloseHandle(m_hHandle);
    }
    ScopedHandle(const ScopedHandle&) = delete;
    ScopedHandle& operator=(const ScopedHandle&) = delete;

    HANDLE Get() const { return m_hHandle; }
    HANDLE Release()
    {
        const HANDLE handle = m_hHandle;
        m_hHandle = nullptr;
        return handle;
    }

private:
    HANDLE m_hHandle;
};

// A view of a mapping from its start, unmapped at the end of its scope.
class ScopedView
{
public:
    ScopedView(HANDLE mapping, DWORD access, SIZE_T length)
        : m_pBytes(static_cast<BYTE*>(MapViewOfFile(mapping, access, 0, 0, length)))
    {}
    ~ScopedView()
    {
        if (m_pBytes != nullptr)
            UnmapViewOfFile(m_pBytes);
    }
    ScopedView(const ScopedView&) = delete;
    ScopedView& operator=(const ScopedView&) = delete;

    BYTE* Get() const { return m_pBytes; }

private:
    BYTE* m_pBytes;
};

} // namespace

CMemMap::CMemMap(const void* bytes, DWORD byteCount, LPCWSTR transferName) : name(transferName)
{
    if (byteCount == 0)
        return;
    if (name.IsEmpty())
        id = ChooseTransferNumber();
    const HANDLE mapping = MakeMapping(bytes, byteCount);
    if (mapping == nullptr) {
        id = 0;
        return;
    }
    auto* watch = new CMemMapWatch;
    watch->id = id;
    watch->name = name;
    watch->mapping = mapping;
    watch->waitMs = CurrentLinkLimits().publishedBlock;
    watch->semaphore = new CMemMapSemaphore;
    // A block without this semaphore still serves: its reader only has to wait longer.
    watch->semaphore->Open(TookItName(id, name), true);
    thread = CMemMapWatch::Start(watch);
}

// The filled mapping, or null.
HANDLE CMemMap::MakeMapping(const void* bytes, DWORD byteCount)
{
    if (byteCount > std::numeric_limits<DWORD>::max() - lengthSize)
        return nullptr;
    const DWORD total = byteCount + lengthSize;
    ScopedHandle mapping(
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, total, MappingName(id, name)));
    if (mapping.Get() == nullptr)
        return nullptr;
    const ScopedView view(mapping.Get(), FILE_MAP_WRITE, total);
    if (view.Get() == nullptr)
        return nullptr;
    std::memcpy(view.Get(), &byteCount, lengthSize);
    std::memcpy(view.Get() + lengthSize, bytes, byteCount);
    return mapping.Release();
}

CMemMap::CMemMap(DWORD transferId, LPCWSTR transferName)
{
    const CString wantedName(transferName);
    // A claim that can't be made at all does not keep the reader out; one that is already there does.
    CMemMapSemaphore claim;
    claim.Open(ClaimName(transferId, wantedName), true);
    if (claim.handle != nullptr && claim.existed)
        return;
    if (!TakeCopy(transferId, wantedName))
        return;
    CMemMapSemaphore done;
    done.Open(DoneName(transferId, wantedName), true);
    CMemMapSemaphore tookIt;
    if (tookIt.Open(TookItName(transferId, wantedName), false))
        tookIt.SignalLocked();
    tookIt.Close();
    done.Wait(CurrentLinkLimits().blockLetGo);
}

// One look only: a block that is not there now is not waited for.
bool CMemMap::TakeCopy(DWORD transferId, const CString& transferName)
{
    const ScopedHandle mapping(OpenFileMappingW(FILE_MAP_READ, FALSE, MappingName(transferId, transferName)));
    if (mapping.Get() == nullptr)
        return false;
    const ScopedView length(mapping.Get(), FILE_MAP_READ, lengthSize);
    if (length.Get() == nullptr)
        return false;
    DWORD byteCount = 0;
    std::memcpy(&byteCount, length.Get(), lengthSize);
    const ScopedView block(mapping.Get(), FILE_MAP_READ, static_cast<SIZE_T>(byteCount) + lengthSize);
    if (block.Get() == nullptr)
        return false;
    data = static_cast<BYTE*>(operator new(byteCount));
    std::memcpy(data, block.Get() + lengthSize, byteCount);
    id = transferId;
    name = transferName;
    size = byteCount;
    return true;
}

CMemMap::~CMemMap()
{
    operator delete(data);
}
