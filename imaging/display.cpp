#include "imaging/display.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <vector>

#include "imaging/bit_counts.h"
#include "imaging/bits.h"
#include "imaging/error.h"
#include "imaging/linear_span.h"
#include "imaging/parallel.h"

namespace imaging {

namespace {

// The part of one direction that an output pixel covers: source pixels first up to, without, end. The outer two count
// with their weights, those between with the scale's unit; nothing is covered when first equals end.
struct Cover
{
    int first = 0;
    int end = 0;
    int firstWeight = 0;
    int lastWeight = 0;
    int total = 0;
};

// How one direction of the output lies on one direction of the image.
class Scale
{
public:
    // Output pixel i covers from slope i + start to slope (i + 1) + start.
    Scale(double slope, double start, int imageLength) : m_slope(slope), m_start(start), m_length(imageLength)
    {
        // Parts of pixels matter as long as an output pixel covers few of them.
        m_unit = std::abs(slope) > 1 && std::abs(slope) < 12 ? 16 : 1;
    }

    int unit() const { return m_unit; }

    Cover at(int i) const
    {
        if (std::abs(m_slope) <= 1)
            return nearest(i);
        const double one = m_slope * i + m_start;
        const double other = one + m_slope;
        const std::int64_t from = toUnits(std::min(one, other));
        const std::int64_t to = toUnits(std::max(one, other));
        if (from >= to)
            return {};
        Cover cover;
        cover.first = int(from / m_unit);
        cover.end = int((to + m_unit - 1) / m_unit);
        cover.total = int(to - from);
        cover.firstWeight = int(std::min<std::int64_t>(to, (cover.first + 1) * std::int64_t(m_unit)) - from);
        cover.lastWeight = int(to - std::max<std::int64_t>(from, (cover.end - 1) * std::int64_t(m_unit)));
        return cover;
    }

private:
    Cover nearest(int i) const
    {
        const double centre = std::floor(m_slope * (i + 0.5) + m_start);
        if (!(centre >= 0 && centre < m_length))
            return {};
        return {int(centre), int(centre) + 1, 1, 1, 1};
    }

    std::int64_t toUnits(double position) const
    {
        return std::llround(std::clamp(position, 0.0, double(m_length)) * m_unit);
    }

    double m_slope;
    double m_start;
    int m_length;
    int m_unit = 1;
};

// Counts ink column by column over the rows that an output row covers, for 64 columns at a time: the counts' digits
// of base two lie in one word each, a plane for every digit.
class ColumnCounts
{
public:
    ColumnCounts(const Bitmap& bitmap, int firstColumn, int endColumn)
        : m_bitmap(bitmap), m_firstWord(firstColumn / 64), m_words((endColumn + 63) / 64 - m_firstWord),
          m_planes(std::size_t(m_words + 1) * maximumPlanes, 0), m_before(std::size_t(m_words) + 2, 0),
          m_blank(std::size_t(m_words), 0)
    {}

    void count(const Cover& rows, int unit)
    {
        if (unit == 1) {
            countWhole(rows);
        } else {
            countWeighted(rows, unit);
        }
        m_lastEnd = -1;
        std::int64_t ink = 0;
        for (int i = 0; i < m_words; ++i) {
            m_before[std::size_t(i)] = ink;
            ink += inkOf(i, allBits);
        }
        m_before[std::size_t(m_words)] = m_before[std::size_t(m_words) + 1] = ink;
    }

    // The weighted sum over the columns of a cover.
    std::int64_t sum(const Cover& columns, int unit)
    {
        const int begin = columns.first - m_firstWord * 64;
        const int end = columns.end - m_firstWord * 64;
        // Most output pixels begin where the one before ended.
        const std::int64_t inkBefore = begin == m_lastEnd ? m_inkBeforeLastEnd : before(begin);
        m_inkBeforeLastEnd = before(end);
        m_lastEnd = end;
        std::int64_t total = (m_inkBeforeLastEnd - inkBefore) * unit;
        if (total == 0 || unit == 1)
            return total;
        total -= std::int64_t(unit - columns.firstWeight) * countAt(begin);
        if (end - begin > 1)
            total -= std::int64_t(unit - columns.lastWeight) * countAt(end - 1);
        return total;
    }

private:
    static constexpr int maximumPlanes = 26;

    std::uint64_t* plane(int digit) { return m_planes.data() + std::ptrdiff_t(digit) * (m_words + 1); }
    const std::uint64_t* plane(int digit) const { return m_planes.data() + std::ptrdiff_t(digit) * (m_words + 1); }

    // Each row counts once.
    void countWhole(const Cover& rows)
    {
        m_usedPlanes = std::bit_width(std::uint64_t(rows.end - rows.first));
        m_rows.clear();
        for (int y = rows.first; y < rows.end; ++y)
            m_rows.push_back(m_bitmap.row(y) + m_firstWord);
        m_rows.resize((m_rows.size() + 7) / 8 * 8, m_blank.data());
        int i = 0;
        for (; i + 2 <= m_words; i += 2)
            countColumns<WordPair>(i);
        if (i < m_words)
            countColumns<std::uint64_t>(i);
    }

    // Eight rows at a time are added up, and that to what there is.
    template <class Word> void countColumns(std::ptrdiff_t i)
    {
        std::array<Word, maximumPlanes> total;
        std::fill_n(total.begin(), m_usedPlanes, Word{});
        for (std::size_t row = 0; row < m_rows.size(); row += 8) {
            const BitCounts<Word, 4> more = countDown<Word, 3>(m_rows.data() + row, i);
            Word carry{};
            for (std::size_t digit = 0; digit < std::size_t(m_usedPlanes); ++digit) {
                const Word other = digit < more.size() ? more[digit] : Word{};
                const Word differ = total[digit] ^ other;
                const Word both = total[digit] & other;
                total[digit] = differ ^ carry;
                carry = both | (differ & carry);
            }
        }
        for (int digit = 0; digit < m_usedPlanes; ++digit)
            std::memcpy(plane(digit) + i, &total[std::size_t(digit)], sizeof(Word));
    }

    // Each row counts with its weight, so many digits up as each of the weight's ones.
    void countWeighted(const Cover& rows, int unit)
    {
        std::fill(m_planes.begin(), m_planes.begin() + std::ptrdiff_t(m_usedPlanes) * (m_words + 1), 0);
        m_usedPlanes = 0;
        std::int64_t weightSoFar = 0;
        for (int y = rows.first; y < rows.end; ++y) {
            const int weight = y == rows.first ? rows.firstWeight : y == rows.end - 1 ? rows.lastWeight : unit;
            weightSoFar += weight;
            m_usedPlanes = std::bit_width(std::uint64_t(weightSoFar));
            const std::uint64_t* row = m_bitmap.row(y) + m_firstWord;
            for (int digit = 0; weight >> digit; ++digit) {
                if (weight >> digit & 1)
                    add(row, digit);
            }
        }
    }

    // Adds a row of ones and zeros at the given digit, carries included.
    void add(const std::uint64_t* row, int digit)
    {
        constexpr int chunk = 8;
        for (int first = 0; first < m_words; first += chunk) {
            const int count = std::min(chunk, m_words - first);
            std::uint64_t carry[chunk] = {};
            std::memcpy(carry, row + first, std::size_t(count) * sizeof carry[0]);
            for (int at = digit; at < m_usedPlanes; ++at) {
                std::uint64_t* digits = plane(at) + first;
                std::uint64_t more = 0;
                for (int i = 0; i < count; ++i) {
                    const std::uint64_t both = digits[i] & carry[i];
                    digits[i] ^= carry[i];
                    carry[i] = both;
                    more |= both;
                }
                if (!more)
                    break;
            }
        }
    }

    // The ink in the columns of a word that the mask tells.
    std::int64_t inkOf(int word, std::uint64_t mask) const
    {
        std::int64_t ink = 0;
        const std::uint64_t* digits = plane(m_usedPlanes) + word;
        for (int digit = 0; digit < m_usedPlanes; ++digit)
            ink = 2 * ink + std::popcount(*(digits -= m_words + 1) & mask);
        return ink;
    }

    // The ink in all columns before x.
    std::int64_t before(int x) const
    {
        const std::int64_t* ink = m_before.data() + (x >> 6);
        return ink[0] == ink[1] ? ink[0] : ink[0] + inkOf(x >> 6, ~maskFrom(x));
    }

    std::int64_t countAt(int x) const
    {
        std::int64_t count = 0;
        for (int digit = 0; digit < m_usedPlanes; ++digit)
            count |= std::int64_t(plane(digit)[x >> 6] >> (63 - (x & 63)) & 1) << digit;
        return count;
    }

    const Bitmap& m_bitmap;
    int m_firstWord;
    int m_words;
    int m_usedPlanes = 0;
    std::vector<std::uint64_t> m_planes;
    std::vector<std::int64_t> m_before;       // the ink of all words before each
    std::vector<std::uint64_t> m_blank;       // a row of paper
    std::vector<const std::uint64_t*> m_rows; // those to count, and paper to make them a multiple of eight
    int m_lastEnd = -1;                       // where the last cover summed up ended
    std::int64_t m_inkBeforeLastEnd = 0;
};

// In double precision, which is faster than a division of integers. The half keeps the quotient so far from the next
// integer that it is cut rightly.
std::uint8_t share(std::int64_t ink, std::int64_t total)
{
    const std::int64_t rounded = ink * 255 + total / 2;
    return std::uint8_t((double(rounded) + 0.5) / double(total));
}

// Rows of the output lie along rows of the image, perhaps mirrored.
void sampleUpright(const Bitmap& bitmap, const Affine& map, Size output, std::uint8_t* gray, std::ptrdiff_t stride)
{
    const Scale columns(map.xx, map.x0, bitmap.width());
    const Scale rows(map.yy, map.y0, bitmap.height());
    std::vector<Cover> covers(std::size_t(output.width));
    int left = bitmap.width();
    int right = 0;
    for (int x = 0; x < output.width; ++x) {
        Cover& cover = covers[std::size_t(x)] = columns.at(x);
        if (cover.total > 0) {
            left = std::min(left, cover.first);
            right = std::max(right, cover.end);
        }
    }
    if (left >= right)
        return;
    inParallel(output.height, 16, [&](int begin, int end) {
        ColumnCounts counts(bitmap, left, right);
        Cover last;
        for (int y = begin; y < end; ++y) {
            const Cover cover = rows.at(y);
            if (cover.total == 0)
                continue;
            std::uint8_t* line = gray + y * stride;
            if (y > begin && cover.total == 1 && last.total == 1 && cover.first == last.first) {
                std::memcpy(line, line - stride, std::size_t(output.width));
                continue;
            }
            last = cover;
            counts.count(cover, rows.unit());
            for (int x = 0; x < output.width; ++x) {
                const Cover& across = covers[std::size_t(x)];
                if (across.total == 0)
                    continue;
                if (const std::int64_t ink = counts.sum(across, columns.unit()))
                    line[x] = share(ink, std::int64_t(across.total) * cover.total);
            }
        }
    });
}

// The ink in a rectangle of the image.
std::int64_t countInk(const Bitmap& bitmap, const Rect& rect)
{
    std::int64_t ink = 0;
    for (int y = rect.top; y < rect.bottom; ++y) {
        const std::uint64_t* row = bitmap.row(y);
        forEachWord(rect.left, rect.right,
                    [&](std::ptrdiff_t i, std::uint64_t mask) { ink += std::popcount(row[i] & mask); });
    }
    return ink;
}

// At any other angle each output pixel takes the average of an upright rectangle of the same area around its centre.
void sampleTurned(const Bitmap& bitmap, const Affine& map, Size output, std::uint8_t* gray, std::ptrdiff_t stride)
{
    const double width = std::max(1.0, std::hypot(map.xx, map.xy));
    const double height = std::max(1.0, std::hypot(map.yx, map.yy));
    const auto clamped = [](double position, int length) {
        return int(std::clamp(std::floor(position + 0.5), 0.0, double(length)));
    };
    inParallel(output.height, 16, [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            const OutputSpan span = insideImage(bitmap.size(), map, output, y);
            for (int x = span.begin; x < span.end; ++x) {
                const double centreX = map.xx * (x + 0.5) + map.xy * (y + 0.5) + map.x0;
                const double centreY = map.yx * (x + 0.5) + map.yy * (y + 0.5) + map.y0;
                const Rect rect{
                    clamped(centreX - width / 2, bitmap.width()), clamped(centreY - height / 2, bitmap.height()),
                    clamped(centreX + width / 2, bitmap.width()), clamped(centreY + height / 2, bitmap.height())};
                if (rect.empty())
                    continue;
                if (const std::int64_t ink = countInk(bitmap, rect))
                    gray[y * stride + x] = share(ink, std::int64_t(rect.width()) * rect.height());
            }
        }
    });
}

void check(const Affine& map)
{
    for (const double number : {map.xx, map.xy, map.x0, map.yx, map.yy, map.y0}) {
        if (!std::isfinite(number))
            throw ImagingError("The image can't be shown: its place in the drawing has no usable numbers.");
    }
    if (map.xx * map.yy - map.xy * map.yx == 0)
        throw ImagingError("The image can't be shown: it is flattened to a line.");
}

} // namespace

void sampleCoverage(const Bitmap& bitmap, const Affine& fromOutputToImage, Size output, std::uint8_t* gray,
                    std::ptrdiff_t stride)
{
    check(fromOutputToImage);
    for (int y = 0; y < output.height; ++y)
        std::memset(gray + y * stride, 0, std::size_t(std::max(output.width, 0)));
    if (bitmap.empty() || output.empty())
        return;
    if (fromOutputToImage.xy == 0 && fromOutputToImage.yx == 0) {
        sampleUpright(bitmap, fromOutputToImage, output, gray, stride);
    } else {
        sampleTurned(bitmap, fromOutputToImage, output, gray, stride);
    }
}

OutputSpan insideImage(Size image, const Affine& map, Size output, int y)
{
    const double row = y + 0.5;
    const Span all{0, std::max(output.width, 0)};
    const Span across = whereBetween(all, map.xx, map.xx * 0.5 + map.xy * row + map.x0, 0, image.width);
    const Span span = whereBetween(across, map.yx, map.yx * 0.5 + map.yy * row + map.y0, 0, image.height);
    return {span.begin, span.end};
}

} // namespace imaging
