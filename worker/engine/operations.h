#pragma once

#include <cstdint>
#include <string_view>

#include "worker/engine/clipboard.h"
#include "worker/engine/commit_gate.h"
#include "worker/engine/fonts.h"
#include "worker/engine/request.h"

namespace worker {

/// What operations reach besides files. All outlive the operation.
struct OperationContext
{
    CommitGate& gate;
    Clipboard& clipboard;
    Fonts* fonts = nullptr; // null: all text in the stroke font
};

/// One entry of the worker's table.
struct Operation
{
    std::uint32_t code;
    std::string_view name;

    /// Does the request and puts results into its group. Files are replaced whole, inside the gate. Throws
    /// imaging::ImagingError, or another std::exception, with every file as it was, when it can't be done.
    void (*run)(Request& request, const OperationContext& context);
};

/// Null for a code that the worker does not know.
const Operation* findOperation(std::uint32_t code);

} // namespace worker
