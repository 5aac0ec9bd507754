// What drawings in tests begin with.
#pragma once

#include <memory>

#include "drawing/document.h"

namespace drawing::test {

template <class T> T& add(Document& document, Block& block)
{
    return document.addEntity(block, std::make_unique<T>());
}

/// A line on a layer of its own, with a name beyond ASCII and numbers of all sizes.
inline Line& addLineOnLayer(Document& document)
{
    auto layer = std::make_unique<Layer>();
    layer->recordName = "Wände";
    layer->color = 5;
    document.addRecord(std::move(layer));
    auto& line = add<Line>(document, document.modelSpace());
    line.layer = "Wände";
    line.start = {0.1, 0.2, 0.3};
    line.end = {1e20, -1e-7, 0};
    line.lineweight = 35;
    return line;
}

} // namespace drawing::test
