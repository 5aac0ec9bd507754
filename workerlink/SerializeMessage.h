#pragma once

#include <vector>

#include "workerlink/WorkerMessage.h"

// The record's byte form, the same in both directions: docs/record.md tells it, field by field.

/// The record's bytes.
std::vector<BYTE> SerializeMessage(const WorkerMessage& message);

/// Overwrites `operation` and the group that the bytes' own code names; every other field stays. The bytes stay the
/// caller's. A region in the bytes becomes a new CRgn, which the record does not free. Throws CArchiveException
/// (endOfFile) when the bytes end early.
void DeserializeMessage(WorkerMessage& message, const BYTE* bytes, size_t length);
