#include "workerlink/MemMapNames.h"

#include <cstring>
#include <objbase.h>

namespace {

CString ObjectName(LPCWSTR prefix, LPCWSTR kind, DWORD id, const CString& name)
{
    CString text;
    if (id != 0) {
        text.Format(L"%sCMemMap_%s_%lu", prefix, kind, id);
    } else {
        text.Format(L"%sCMemMap_%s_%s", prefix, kind, static_cast<LPCWSTR>(name));
    }
    return text;
}

// A transfer's number is never small.
DWORD AboveSmallNumbers(DWORD number)
{
    return number <= 0xFFFF ? number + 0xFFFF : number;
}

} // namespace

CString MappingName(DWORD id, const CString& name)
{
    return ObjectName(L"", L"M", id, name);
}

CString ClaimName(DWORD id, const CString& name)
{
    return MappingName(id, name) + L"S";
}

CString TookItName(DWORD id, const CString& name)
{
    return ObjectName(L"", L"S", id, name);
}

CString DoneName(DWORD id, const CString& name, bool global)
{
    return ObjectName(global ? L"Global\\" : L"", L"SEnd", id, name);
}

DWORD ChooseTransferNumber()
{
    LARGE_INTEGER counter = {};
    if (QueryPerformanceCounter(&counter))
        return TransferNumberFromCounter(static_cast<ULONGLONG>(counter.QuadPart));
    GUID guid = {};
    CoCreateGuid(&guid);
    return TransferNumberFromGuid(guid);
}

DWORD TransferNumberFromCounter(ULONGLONG counter)
{
    return AboveSmallNumbers(static_cast<DWORD>(counter));
}

DWORD TransferNumberFromGuid(const GUID& guid)
{
    ULONGLONG halves[2];
    static_assert(sizeof(halves) == sizeof(guid));
    std::memcpy(halves, &guid, sizeof(guid));
    const ULONGLONG folded = halves[0] ^ halves[1];
    return AboveSmallNumbers(static_cast<DWORD>(folded) ^ static_cast<DWORD>(folded >> 32));
}
