#pragma once

#include <windows.h>
#include <cstdint>
#include <optional>
#include <vector>

#include "imaging/geometry.h"

namespace desk::script {

/// What a mouse cursor looks like: its hot spot, and its pixels as they come out on a black and on a white ground,
/// 0x00RRGGBB, in a square of `side` pixels.
struct CursorPicture
{
    static constexpr int side = 64;

    POINT hotSpot{};
    std::vector<std::uint32_t> onBlack, onWhite;

    /// Nothing for a hidden cursor.
    static std::optional<CursorPicture> of(HCURSOR cursor);
    /// A picture whose pixels of the colour `clear` let the ground through. Throws nothing, but cuts at `side`.
    static CursorPicture ofPixels(const std::vector<std::uint32_t>& pixels, imaging::Size size, std::uint32_t clear,
                                  POINT hotSpot);

    bool sameAs(const CursorPicture& other) const;
    /// The same but for an upright square about the hot spot, of any size, whose outline is two pixels wide: the tools'
    /// brushes are shown so.
    bool sameButSquare(const CursorPicture& other) const;
};

} // namespace desk::script
