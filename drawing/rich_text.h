// Texts as they are meant: characters with their looks, read from the codes of TEXT and MTEXT.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/glyphs.h"

namespace drawing {

/// A colour that a text names inside: an index as entities have it (256: by layer), or a true colour, 0xRRGGBB.
struct TextColor
{
    int index = 256;
    std::optional<std::uint32_t> trueColor;
    bool operator==(const TextColor&) const = default;
};

/// How characters look.
struct TextFormat
{
    enum class Alignment
    {
        Baseline, // of characters lower than their line: how they stand in it
        Middle,
        Top,
    };

    double height = 1;      // of capitals, in the text's plane
    double widthFactor = 1; // on the glyphs' own width
    double oblique = 0;     // lean to the right, degrees
    double tracking = 1;    // on the advances
    Alignment alignment = Alignment::Baseline;
    bool underline = false;
    bool overline = false;
    bool strike = false;
    std::optional<TextColor> color; // nothing: the entity's
    FontRequest font;
};

/// Two small texts in the place of one character.
struct TextStack
{
    enum class Kind
    {
        Fraction,  // a bar between them
        Diagonal,  // a slash between them
        Tolerance, // nothing between them
    };

    Kind kind = Kind::Fraction;
    std::u32string above;
    std::u32string below;
};

/// Lengths in the text's plane.
struct ParagraphFormat
{
    enum class Alignment
    {
        Inherited, // from the whole text
        Left,
        Center,
        Right,
    };

    double firstIndent = 0; // of the first line, on top of the left one
    double leftIndent = 0;
    double rightIndent = 0;
    Alignment alignment = Alignment::Inherited;
    std::vector<double> tabs; // rising; after the last they go on at even distances
    bool operator==(const ParagraphFormat&) const = default;
};

struct TextElement
{
    enum class Kind : std::uint8_t
    {
        Character,
        Tab,
        Stack,
        LineBreak,
        ParagraphEnd,
    };

    Kind kind = Kind::Character;
    std::uint32_t format = 0; // into RichText::formats
    std::uint32_t value = 0;  // Character: itself; Stack: into stacks; ParagraphEnd: into paragraphs
};

/// A text without its codes. The last element is a ParagraphEnd.
struct RichText
{
    std::vector<TextElement> elements;
    std::vector<TextFormat> formats;
    std::vector<TextStack> stacks;
    std::vector<ParagraphFormat> paragraphs;
};

/// Of a TEXT, ATTRIB or ATTDEF: %%d and the like, carets and \U+XXXX. `base` is how it looks where no code says
/// otherwise.
RichText readText(std::string_view text, const TextFormat& base);

/// Of an MTEXT. Codes that are not known, or not well-formed, are passed over.
RichText readMText(std::string_view text, const TextFormat& base);

/// One line of characters that stand for themselves.
RichText literalText(std::string_view text, const TextFormat& format);

} // namespace drawing
