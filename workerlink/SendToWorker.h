#pragma once

#include "workerlink/WorkerMessage.h"

/// The full path of the worker program; the module's start-up sets it once.
void SetWorkerPath(const CString& path);
const CString& GetWorkerPath();

/// One exchange with a worker process of its own, tried a second time when the first try failed fast. Blocks the caller
/// and pumps no messages. True when a reply came and was read into `message`; on false the record is as it was.
/// A reply that ends early raises CArchiveException (endOfFile).
bool SendToWorker(WorkerMessage& message);
