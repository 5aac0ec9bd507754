#include "worker/engine/operations.h"

#include <algorithm>
#include <array>

#include "worker/engine/clipboard_file.h"
#include "worker/engine/convert_file.h"
#include "worker/engine/edit_file.h"
#include "worker/engine/format_query.h"
#include "worker/engine/place_raster.h"
#include "worker/engine/rasterize.h"
#include "workerlink/protocol.h"

namespace worker {

namespace {

using Context = OperationContext;

// A crop is a conversion of a file onto itself.
constexpr std::array operations{
    Operation{OperationNewRaster, "NewRaster",
              [](Request& request, const Context& context) { makeNewRaster(request.newRaster, context.gate); }},
    Operation{OperationInsertRaster, "InsertRaster",
              [](Request& request, const Context& context) { insertRaster(request.insertRaster, context.gate); }},
    Operation{OperationFormatQuery, "FormatQuery",
              [](Request& request, const Context&) { answerFormatQuery(request.formatQuery); }},
    Operation{OperationConvertFile, "ConvertFile",
              [](Request& request, const Context& context) { convertFile(request.convertFile, context.gate); }},
    Operation{
        OperationCopyToClipboard, "CopyToClipboard",
        [](Request& request, const Context& context) { copyFromFile(request.copyToClipboard, context.clipboard); }},
    Operation{OperationPasteFromClipboard, "PasteFromClipboard",
              [](Request& request, const Context& context) {
                  pasteIntoFile(request.pasteFromClipboard, context.clipboard, context.gate);
              }},
    Operation{OperationInvert, "Invert",
              [](Request& request, const Context& context) { invertFile(request.invert, context.gate); }},
    Operation{OperationRotate, "Rotate",
              [](Request& request, const Context& context) { rotateFile(request.rotate, context.gate); }},
    Operation{OperationFilter, "Filter",
              [](Request& request, const Context& context) { filterFile(request.filter, context.gate); }},
    Operation{OperationRasterize, "Rasterize",
              [](Request& request, const Context& context) {
                  rasterizeFile(request.rasterize, context.fonts, context.gate);
              }},
};

} // namespace

const Operation* findOperation(std::uint32_t code)
{
    const auto found = std::ranges::find(operations, code, &Operation::code);
    return found == operations.end() ? nullptr : &*found;
}

} // namespace worker
