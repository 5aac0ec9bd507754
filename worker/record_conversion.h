#pragma once

#include "worker/engine/request.h"
#include "workerlink/WorkerMessage.h"

namespace worker {

/// The record's fields as the engine's plain values. Regions are copied; the record keeps its own.
Request requestFromRecord(const WorkerMessage& record);

/// Puts into the record what the operation answers besides its success.
void putResults(const Request& request, WorkerMessage& record);

} // namespace worker
