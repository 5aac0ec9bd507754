#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "drawing/dwg/record_names.h"
#include "drawing/header_variables.h"
#include "drawing/text_encoding.h"

namespace drawing::dwg {

/// The objects by which all others are reached, as the section of the header variables names them.
enum class Root
{
    BlockControl,
    LayerControl,
    StyleControl,
    LinetypeControl,
    ViewControl,
    SystemControl,
    ViewportControl,
    ApplicationControl,
    DimensionStyleControl,
    ViewportHeaderControl,
    GroupDictionary,
    MultilineStyleDictionary,
    NamedObjects,
    LayoutDictionary,
    PlotSettingsDictionary,
    PlotStyleDictionary,
    PaperSpace,
    ModelSpace,
    ByLayer,
    ByBlock,
    Continuous,
    Count,
};

class Roots
{
public:
    Handle& operator[](Root root) { return m_handles[static_cast<std::size_t>(root)]; }
    Handle operator[](Root root) const { return m_handles[static_cast<std::size_t>(root)]; }
    bool operator==(const Roots&) const = default;

private:
    std::array<Handle, static_cast<std::size_t>(Root::Count)> m_handles{};
};

/// The section of the header variables: they, and the roots.
struct HeaderSection
{
    HeaderVariables variables;
    Roots roots;
    Handle handleSeed = 0;
};

/// The roots alone, with which the names can be found that the variables need.
Roots readRoots(std::string_view content, const TextEncoding& encoding);
/// From the section's content. Throws DrawingError.
HeaderSection readHeaderSection(std::string_view content, const TextEncoding& encoding, RecordNames& names);
/// Variables that are missing have their usual values.
std::string writeHeaderSection(const HeaderSection& section, const TextEncoding& encoding, RecordNames& names);

} // namespace drawing::dwg
