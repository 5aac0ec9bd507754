// What a raster module's toolbar shows to everybody: the numbers of its buttons.
#pragma once

#include <optional>

namespace desk::script {

/// Enabled exactly while a raster is current.
constexpr int saveRasterButton = 40009;
/// Checked while a raster is current or is being picked.
constexpr int selectRasterButton = 32800;

/// The button that is checked while that tool is at work; nothing of a tool that has none.
constexpr std::optional<int> buttonOfTool(int tool)
{
    switch (tool) {
    case 1:
        return selectRasterButton;
    case 2:
        return 32795;
    case 3:
        return 32797;
    case 4:
        return 32799;
    case 5:
        return 32798;
    default:
        return std::nullopt;
    }
}

} // namespace desk::script
