#include "workerlink/OpenToAll.h"

namespace {

// Zeroed memory from the process heap.
class HeapBlock
{
public:
    explicit HeapBlock(DWORD size) : m_pBytes(HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, size)) {}
    ~HeapBlock()
    {
        if (m_pBytes != nullptr)
            HeapFree(GetProcessHeap(), 0, m_pBytes);
    }
    HeapBlock(const HeapBlock&) = delete;
    HeapBlock& operator=(const HeapBlock&) = delete;

    void* Get() const { return m_pBytes; }

private:
    void* m_pBytes;
};

} // namespace

DWORD OpenToAll(HANDLE object)
{
    SECURITY_INFORMATION what = DACL_SECURITY_INFORMATION;
    DWORD size = 0;
    if (!GetUserObjectSecurity(object, &what, nullptr, 0, &size)) {
        const DWORD error = GetLastError();
        if (error != ERROR_INSUFFICIENT_BUFFER)
            return error;
    }
    // The system may call the present descriptor smaller than the structure that takes its place.
    if (size < sizeof(SECURITY_DESCRIPTOR))
        size = sizeof(SECURITY_DESCRIPTOR);
    const HeapBlock block(size);
    PSECURITY_DESCRIPTOR descriptor = block.Get();
    if (descriptor == nullptr)
        return ERROR_NOT_ENOUGH_MEMORY;
    if (!InitializeSecurityDescriptor(descriptor, SECURITY_DESCRIPTOR_REVISION) ||
        !SetSecurityDescriptorDacl(descriptor, TRUE, nullptr, TRUE) ||
        !SetUserObjectSecurity(object, &what, descriptor))
        return GetLastError();
    return ERROR_SUCCESS;
}
