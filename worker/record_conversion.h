#pragma once

#include "worker/engine/request.h"
#include "workerlink/WorkerMessage.h"

namespace worker {

/// The fields of the record's own operation as the engine's plain values; the other groups stay empty. Regions are
/// copied, cut to FarthestCoordinate; the record keeps its own.
Request requestFromRecord(const WorkerMessage& record);

/// Puts into the record what the operation answers besides its success.
void putResults(const Request& request, WorkerMessage& record);

} // namespace worker
