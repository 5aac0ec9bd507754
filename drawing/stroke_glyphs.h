// The drawings of the stroke font's letters.
#pragma once

#include <span>
#include <string_view>

namespace drawing {

/// A letter on a grid where capitals are 12 high, small letters 8, and descenders reach to -4. Its strokes lie between
/// x = 0 and `width`, in words parted by blanks:
///   3,4     a point; a line runs to it from the point before
///   h3,4    a quarter of an ellipse to this point that sets out level; v3,4 sets out upright
///   q1,2    the next point is reached by a parabola towards 1,2
///   *3,4    a dot
///   |       the pen is lifted
///   =A      the strokes of another letter; =A@2,3 moved; =A@2,3/0.5,0.6 made narrower and lower before
struct StrokeDrawing
{
    char32_t character;
    double width;
    std::u32string_view strokes;
};
std::span<const StrokeDrawing> strokeDrawings();

/// Letters that look like others: `characters` one by one like `like`, narrower and lower by the factors.
struct StrokeLikeness
{
    std::u32string_view characters;
    std::u32string_view like;
    double widthFactor = 1;
    double heightFactor = 1;
};
std::span<const StrokeLikeness> strokeLikenesses();

/// An accent, drawn around x = 0, and the letters that are their base letters with it.
struct StrokeAccent
{
    enum class Place
    {
        Above,  // y = 0 is the top of the base letter
        Below,  // y = 0 is the baseline, under the middle of the letter
        Foot,   // the same, at the right end of the letter
        Beside, // y = 0 is the baseline, to the right of the letter
        Before, // y = 0 is the baseline, to the left of the letter
    };

    char32_t accent; // as a character of its own; 0: none
    Place place;
    std::u32string_view strokes;
    std::u32string_view characters;
    std::u32string_view bases;
};
std::span<const StrokeAccent> strokeAccents();

} // namespace drawing
