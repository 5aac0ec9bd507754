// Which root of the header variables leads to which table.
#pragma once

#include <string_view>
#include <utility>

#include "drawing/dwg/header_section.h"

namespace drawing::dwg {

inline constexpr std::pair<std::string_view, Root> tableRoots[] = {{"BLOCK_RECORD", Root::BlockControl},
                                                                   {"LAYER", Root::LayerControl},
                                                                   {"STYLE", Root::StyleControl},
                                                                   {"LTYPE", Root::LinetypeControl},
                                                                   {"VIEW", Root::ViewControl},
                                                                   {"UCS", Root::SystemControl},
                                                                   {"VPORT", Root::ViewportControl},
                                                                   {"APPID", Root::ApplicationControl},
                                                                   {"DIMSTYLE", Root::DimensionStyleControl}};

} // namespace drawing::dwg
