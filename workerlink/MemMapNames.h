#pragma once

#include "platform/platform.h"

// The names of a transfer's kernel objects. A transfer is known by its number or, when `id` is 0, by its name; the
// decimal text of a number as the name gives the same names as the number itself. All lie in the session's own
// namespace.

/// Holds the block.
CString MappingName(DWORD id, const CString& name);
/// Held by the reader: one reader at a time.
CString ClaimName(DWORD id, const CString& name);
/// Signalled by the reader: the copy is taken.
CString TookItName(DWORD id, const CString& name);
/// Signalled by the publisher: the mapping is let go. `global` asks for the machine-wide namespace.
CString DoneName(DWORD id, const CString& name, bool global = false);

/// A fresh number for a transfer, from the performance counter, or from a GUID when there is no counter. Not checked
/// for being in use.
DWORD ChooseTransferNumber();
DWORD TransferNumberFromCounter(ULONGLONG counter);
DWORD TransferNumberFromGuid(const GUID& guid);
