#pragma once

class WorkerMessage;

/// One exchange with the worker, as SendToWorker does it; but a reply that breaks off makes it fail like any other
/// fault of the worker's, and leaves no exception to whoever called.
bool AskWorker(WorkerMessage& message);
