#include "imaging/fax_decode.h"

#include <algorithm>
#include <bit>
#include <string>

#include "imaging/error.h"
#include "imaging/fax_codes.h"
#include "imaging/fax_row_reader.h"
#include "imaging/row_changes.h"

namespace imaging {

namespace {

std::string nameOf(FaxCoding coding)
{
    return coding == FaxCoding::Group4 ? "group 4" : "group 3";
}

// Takes the end-of-line code and the zeros that may fill up before it. False when there is something else.
bool takeEndOfLine(FaxBits& bits)
{
    int zeros = 0;
    for (;;) {
        bits.refill();
        constexpr int most = 32;
        const int leading = std::min(std::countl_zero(bits.ahead()), most);
        zeros = std::min(zeros + leading, int(endOfLineCode.size()));
        bits.skip(leading);
        if (bits.beyondEnd())
            return false;
        if (leading < most)
            break;
    }
    bits.skip(1);
    return zeros >= int(endOfLineCode.size()) - 1;
}

// In group 3 an end of line stands before each row, and in the two-dimensional kind a bit that tells how the row is
// coded.
bool readRow(FaxRowReader& reader, FaxCoding coding)
{
    if (coding == FaxCoding::Group4)
        return reader.readTwoDimensional();
    FaxBits& bits = reader.bits();
    if (!takeEndOfLine(bits))
        return false;
    if (coding == FaxCoding::Group3OneDimensional)
        return reader.readOneDimensional();
    bits.refill();
    const bool oneDimensional = bits.peek(1) == 1;
    bits.skip(1);
    return oneDimensional ? reader.readOneDimensional() : reader.readTwoDimensional();
}

} // namespace

void decodeFax(const FaxStream& stream, FaxCoding coding, Bitmap& bitmap, int firstRow, int rowCount, bool inverted)
{
    if (std::size_t(rowCount) > stream.size() * 8) { // a row takes one bit at least
        throw ImagingError("The file holds less " + nameOf(coding) + " data than its " +
                           std::to_string(bitmap.height()) + " rows can take.");
    }
    FaxRowReader reader(stream, bitmap.width());
    for (int y = firstRow; y < firstRow + rowCount; ++y) {
        if (!readRow(reader, coding)) {
            throw ImagingError("The " + nameOf(coding) + " data is damaged or cut off at row " + std::to_string(y) +
                               ".");
        }
        layRuns(bitmap.row(y), bitmap.width(), reader.changes(), inverted);
    }
}

} // namespace imaging
