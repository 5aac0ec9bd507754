#include "tests/support/fax_mutations.h"

#include <string_view>
#include <tiffio.h>

#include "imaging/fax_codes.h"

using imaging::Bitmap;

namespace {

int below(std::mt19937& random, int limit)
{
    return int(random() % unsigned(limit));
}

Bitmap smallPicture(std::mt19937& random)
{
    Bitmap bitmap({1 + below(random, 90), 1 + below(random, 12)});
    const int repeats = 1 + below(random, 4); // how alike neighbouring rows and pixels are
    for (int y = 0; y < bitmap.height(); ++y)
        for (int x = 0; x < bitmap.width(); ++x) {
            const bool fresh = below(random, repeats) == 0;
            const bool neighbour = below(random, 2) && x > 0 ? bitmap.ink(x - 1, y) : y > 0 && bitmap.ink(x, y - 1);
            bitmap.setInk(x, y, fresh ? below(random, 2) == 0 : neighbour);
        }
    return bitmap;
}

void mutate(std::vector<std::uint8_t>& bytes, std::mt19937& random)
{
    for (int times = 1 + below(random, 3); times > 0 && !bytes.empty(); --times) {
        const auto at = bytes.begin() + below(random, int(bytes.size()));
        switch (below(random, 6)) {
        case 0:
            *at = std::uint8_t(random());
            break;
        case 1:
            bytes.erase(at);
            break;
        case 2:
            bytes.insert(at, std::uint8_t(random()));
            break;
        case 3:
            bytes.erase(at, bytes.end());
            break;
        default:
            *at ^= std::uint8_t(1 << below(random, 8));
        }
    }
    if (bytes.empty())
        bytes.push_back(0);
}

class CodeWriter
{
public:
    void put(std::string_view code)
    {
        for (const char digit : code) {
            if (m_used == 0)
                m_bytes.push_back(0);
            m_bytes.back() |= std::uint8_t((digit == '1') << (7 - m_used));
            m_used = (m_used + 1) % 8;
        }
    }
    std::vector<std::uint8_t> take() { return std::move(m_bytes); }

private:
    std::vector<std::uint8_t> m_bytes;
    int m_used = 0; // bits of the last byte
};

// Mostly short runs, so that some rows come out as wide as they should.
void putRun(CodeWriter& writer, bool black, std::mt19937& random)
{
    const auto& codes = black ? imaging::blackRunCodes : imaging::whiteRunCodes;
    if (below(random, 40) == 0)
        writer.put(codes[std::size_t(below(random, imaging::faxRunCodeCount))]);
    writer.put(codes[std::size_t(below(random, below(random, 8) ? 4 : 64))]);
}

void putTwoDimensionalRow(CodeWriter& writer, std::mt19937& random)
{
    bool black = false;
    for (int codes = 1 + below(random, 5); codes > 0; --codes) {
        const int kind = below(random, 10);
        if (kind == 0) {
            writer.put(imaging::passCode);
        } else if (kind <= 2) {
            writer.put(imaging::horizontalCode);
            putRun(writer, black, random);
            putRun(writer, !black, random);
        } else {
            writer.put(imaging::verticalCodes[std::size_t(kind <= 6 ? 3 : below(random, 7))]);
            black = !black;
        }
    }
    writer.put(imaging::verticalCodes[3]);
}

void putOneDimensionalRow(CodeWriter& writer, std::mt19937& random)
{
    const int runs = 1 + below(random, 4);
    for (int i = 0; i < runs; ++i)
        putRun(writer, i % 2 == 1, random);
}

FaxData codesByChance(FaxData data, std::mt19937& random)
{
    data.width = 1 + below(random, 9);
    data.height = 1 + below(random, 5);
    CodeWriter writer;
    const bool twoDimensional =
        data.compression == COMPRESSION_CCITTFAX4 || (data.compression == COMPRESSION_CCITTFAX3 && data.group3Options);
    for (int y = 0; y < data.height; ++y) {
        bool byRowAbove = twoDimensional;
        if (data.compression == COMPRESSION_CCITTFAX3) {
            writer.put(std::string_view("0000000000000000").substr(0, std::size_t(below(random, 9))));
            writer.put(imaging::endOfLineCode);
            byRowAbove = twoDimensional && below(random, 3) > 0;
            if (twoDimensional)
                writer.put(byRowAbove ? "0" : "1");
        }
        byRowAbove ? putTwoDimensionalRow(writer, random) : putOneDimensionalRow(writer, random);
    }
    data.bytes = writer.take();
    if (data.lowestBitFirst)
        TIFFReverseBits(data.bytes.data(), tmsize_t(data.bytes.size()));
    return data;
}

} // namespace

const std::vector<FaxData>& faxForms()
{
    static const std::vector<FaxData> forms = {
        {.compression = COMPRESSION_CCITTFAX4},
        {.compression = COMPRESSION_CCITTFAX4, .lowestBitFirst = true},
        {.compression = COMPRESSION_CCITTFAX3},
        {.compression = COMPRESSION_CCITTFAX3, .group3Options = GROUP3OPT_2DENCODING},
        {.compression = COMPRESSION_CCITTFAX3, .group3Options = GROUP3OPT_FILLBITS, .lowestBitFirst = true},
        {.compression = COMPRESSION_CCITTFAX3, .group3Options = GROUP3OPT_2DENCODING | GROUP3OPT_FILLBITS},
    };
    return forms;
}

FaxData mutatedStream(std::mt19937& random)
{
    // Group 4 is what files have, so every second stream is.
    const FaxData& form = faxForms()[below(random, 2) ? 0 : std::size_t(below(random, int(faxForms().size())))];
    if (below(random, 2))
        return codesByChance(form, random);
    FaxData data = codedByLibtiff(smallPicture(random), form);
    mutate(data.bytes, random);
    return data;
}
