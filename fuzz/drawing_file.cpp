// Reads any bytes as a drawing, draws it, and writes it in both forms.

#include "drawing/drawing_file.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "drawing/flatten.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        const auto document = drawing::readDxf({reinterpret_cast<const char*>(data), size});
        drawing::FlattenOptions options;
        options.limit = 100'000;
        options.window = drawing::Extents{{-1000, -1000}, {1000, 1000}};
        options.viewHeight = 100;
        for (const auto* space : {&document.modelSpace(), &document.paperSpace()})
            drawing::flattenBlock(document, *space, options, [](drawing::FlatItem&&) {});
        drawing::writeDxf(document);
        drawing::writeDxf(document, drawing::DxfForm::Binary);
    } catch (const drawing::DrawingError&) {
        // Refused in words, as it should be.
    }
    return 0;
}
