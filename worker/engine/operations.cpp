#include "worker/engine/operations.h"

#include <algorithm>
#include <array>

#include "worker/engine/clipboard_file.h"
#include "worker/engine/convert_file.h"
#include "worker/engine/edit_file.h"
#include "worker/engine/format_query.h"

namespace worker {

namespace {

constexpr std::array operations{
    Operation{6, "FormatQuery", [](Request& request, CommitGate&) { answerFormatQuery(request.formatQuery); }},
    Operation{7, "ConvertFile", [](Request& request, CommitGate& gate) { convertFile(request.convertFile, gate); }},
    Operation{8, "CopyToClipboard", [](Request& request, CommitGate&) { copyFromFile(request.copyToClipboard); }},
    Operation{9, "PasteFromClipboard",
              [](Request& request, CommitGate& gate) { pasteIntoFile(request.pasteFromClipboard, gate); }},
    Operation{10, "Invert", [](Request& request, CommitGate& gate) { invertFile(request.invert, gate); }},
    Operation{11, "Rotate", [](Request& request, CommitGate& gate) { rotateFile(request.rotate, gate); }},
    Operation{12, "Filter", [](Request& request, CommitGate& gate) { filterFile(request.filter, gate); }},
};

} // namespace

const Operation* findOperation(std::uint32_t code)
{
    const auto found = std::ranges::find(operations, code, &Operation::code);
    return found == operations.end() ? nullptr : &*found;
}

} // namespace worker
