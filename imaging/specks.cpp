// A group is looked at where it may begin: at the left end of a run that nothing of its kind touches from above. Most
// of a sheet has none, which is seen 64 pixels at a time. There the group is traced in a window of 64 pixels, in which
// each row is one word, until it has grown too large. That is soon, as groups must be small.
//
//   ........      ........ row above: if the group gets there, it has its first row elsewhere
//   ...##...      ...11... begins here, in the window's middle
//   ..#..#..  ->  ..2..2.. what it touches below, and so on; then back up for what it touches above
//   ...##.#.      ...33.4.
//   ........      ........

#include "imaging/specks.h"

#include <algorithm>
#include <array>

#include "imaging/bits.h"

namespace imaging {

namespace {

class SpeckFinder
{
public:
    SpeckFinder(Bitmap& bitmap, GroupsOf kind, int side, const Region* region)
        : m_bitmap(bitmap), m_words(bitmap.wordsPerRow()), m_flip(kind == GroupsOf::paper ? allBits : 0), m_side(side),
          m_region(region)
    {}

    void searchRow(int y)
    {
        const std::uint64_t* row = m_bitmap.row(y);
        const std::uint64_t* above = y > 0 ? m_bitmap.row(y - 1) : nullptr;
        std::uint64_t left = 0;      // the word of this kind on the left
        std::uint64_t leftAbove = 0; // and the one above that
        std::uint64_t hereAbove = above ? above[0] ^ m_flip : 0;
        for (std::ptrdiff_t i = 0; i < m_words; ++i) {
            const std::uint64_t here = row[i] ^ m_flip;
            const std::uint64_t rightAbove = above && i + 1 < m_words ? above[i + 1] ^ m_flip : 0;
            std::uint64_t touched = hereAbove;
            if (m_flip == 0)
                touched |= hereAbove << 1 | rightAbove >> 63 | hereAbove >> 1 | leftAbove << 63;
            std::uint64_t beginnings = here & ~(here >> 1 | left << 63) & ~touched;
            for (; beginnings; beginnings &= beginnings - 1)
                removeIfSmall(int(i * 64) + 63 - std::countr_zero(beginnings), y);
            left = here;
            leftAbove = hereAbove;
            hereAbove = rightAbove;
        }
    }

private:
    // Groups are traced in a window whose bit 63 - m_side is the pixel where they begin.
    std::uint64_t window(int x, int y) const
    {
        if (y < 0 || y >= m_bitmap.height())
            return 0;
        // Paper is not beyond the image.
        const int left = x - m_side;
        std::uint64_t pixels = pixelsAt(m_bitmap.row(y), m_words, left) ^ m_flip;
        if (left < 0)
            pixels &= allBits >> -left;
        if (const int beyond = left + 64 - m_bitmap.width(); m_flip != 0 && beyond > 0)
            pixels &= allBits << std::min(beyond, 63);
        return pixels;
    }

    // The pixels that those of a row touch in the rows above and below.
    std::uint64_t reach(std::uint64_t pixels) const
    {
        return m_flip == 0 ? pixels | pixels << 1 | pixels >> 1 : pixels;
    }

    // The runs of which there is a part, or more of them than a group may be wide.
    std::uint64_t runs(std::uint64_t part, std::uint64_t pixels) const
    {
        part &= pixels;
        std::uint64_t toLeft = pixels;
        std::uint64_t toRight = pixels;
        for (int step = 1; step <= m_side; step *= 2) {
            part |= (part << step & toLeft) | (part >> step & toRight);
            toLeft &= toLeft << step;
            toRight &= toRight >> step;
        }
        return part;
    }

    void removeIfSmall(int x, int y)
    {
        const std::uint64_t pixels = window(x, y);
        const int length = std::countl_one(pixels << m_side);
        if (length == 0 || length > m_side) // 0 if it has gone with another run of its first row
            return;
        const std::uint64_t run = ~(allBits >> length) >> m_side;
        const std::uint64_t above = window(x, y - 1);
        if (reach(run) & above)
            return;
        m_pixels[0] = pixels;
        m_group[0] = run;
        m_height = 1;
        if (trace(x, y) && (reach(m_group[0]) & above) == 0 && mayGo(x, y))
            remove(x, y);
    }

    // Follows the group down and up until it grows no more. False if it is too large.
    bool trace(int x, int y)
    {
        for (bool grew = true; grew;) {
            for (std::size_t row = 1; row <= m_height; ++row) {
                if (row == m_height)
                    m_pixels[row] = window(x, y + int(row));
                const std::uint64_t known = row < m_height ? m_group[row] : 0;
                const std::uint64_t now = runs(known | reach(m_group[row - 1]), m_pixels[row]);
                if (now == 0)
                    break;
                m_height = std::max(m_height, row + 1);
                m_group[row] = now;
                if (m_height > std::size_t(m_side))
                    return false;
            }
            grew = false;
            std::uint64_t columns = m_group[m_height - 1];
            for (std::size_t row = m_height - 1; row-- > 0;) {
                const std::uint64_t now = runs(m_group[row] | reach(m_group[row + 1]), m_pixels[row]);
                grew = grew || now != m_group[row];
                columns |= m_group[row] = now;
            }
            if (64 - std::countl_zero(columns) - std::countr_zero(columns) > m_side)
                return false;
        }
        return true;
    }

    // Whether the region holds the group and, if it is of paper, the border of the image does not.
    bool mayGo(int x, int y) const
    {
        const bool paper = m_flip != 0;
        if (paper && (y == 0 || y + int(m_height) == m_bitmap.height()))
            return false;
        for (std::size_t row = 0; row < m_height; ++row) {
            for (std::uint64_t rest = m_group[row]; rest;) {
                const int begin = std::countl_zero(rest);
                const int end = begin + std::countl_one(rest << begin);
                const int left = x - m_side + begin;
                const int right = x - m_side + end;
                if (paper && (left == 0 || right == m_bitmap.width()))
                    return false;
                if (m_region && !m_region->containsSpan(y + int(row), left, right))
                    return false;
                rest &= maskFrom(begin) & ~maskUpTo(end);
            }
        }
        return true;
    }

    void remove(int x, int y)
    {
        const std::ptrdiff_t word = (x - m_side) >> 6;
        const int shift = (x - m_side) & 63;
        for (std::size_t row = 0; row < m_height; ++row) {
            std::uint64_t* words = m_bitmap.row(y + int(row));
            if (word >= 0)
                words[word] ^= m_group[row] >> shift;
            if (shift > 0 && word + 1 < m_words)
                words[word + 1] ^= m_group[row] << (64 - shift);
        }
    }

    Bitmap& m_bitmap;
    const std::ptrdiff_t m_words;
    const std::uint64_t m_flip; // what makes pixels of the kind ones
    const int m_side;
    const Region* const m_region;
    // The window's rows and what the group takes of them, from its first one on.
    std::array<std::uint64_t, largestSpeck + 1> m_pixels;
    std::array<std::uint64_t, largestSpeck + 1> m_group;
    std::size_t m_height = 0;
};

} // namespace

void removeSpecks(Bitmap& bitmap, GroupsOf kind, int side, const Region* region, int top, int bottom)
{
    SpeckFinder finder(bitmap, kind, side, region);
    for (int y = top; y < bottom; ++y)
        finder.searchRow(y);
}

} // namespace imaging
