#pragma once

#include <cstddef>
#include <string>

#include "drawing/dwg/bit_reader.h"
#include "drawing/dwg/bit_writer.h"
#include "drawing/geometry.h"
#include "drawing/text_encoding.h"

namespace drawing::dwg {

/// Moves values between variables and the bits of an object, so that one list of fields serves both ways: it fills
/// the variables from the bits, or appends the variables' values to the bits. Numbers and texts run in one stream,
/// handles in another.
class BitTransfer
{
public:
    /// Reads. `own` is the handle of the object, from which steps are counted.
    BitTransfer(BitReader data, BitReader handles, Handle own, const TextEncoding& encoding);
    /// Writes.
    BitTransfer(Handle own, const TextEncoding& encoding);

    bool reading() const { return m_reading; }
    Handle own() const { return m_own; }
    const TextEncoding& encoding() const { return m_encoding; }

    void bit(bool& value);
    void bits(int& value, unsigned count);
    void byte(int& value);
    void rawShort(int& value);
    void rawLong(int& value);
    void rawReal(double& value);
    void shortNumber(int& value);
    void longNumber(int& value);
    void real(double& value);
    void realNear(double& value, double base);
    void point(Vector3& value); // three reals
    /// x and y alone, as raw reals.
    template <class Vector> void rawFlatPoint(Vector& value)
    {
        rawReal(value.x);
        rawReal(value.y);
    }
    /// Text in UTF-8. A control character stands as a caret and a letter, as in DXF.
    void text(std::string& value);
    void bytes(std::string& value, std::size_t count);
    void handle(Handle& value, Reference kind);
    /// A handle among the numbers, as the section of the header variables has them.
    void plainHandle(Handle& value, Reference kind);

    /// A number of items that follow. Reading: throws DrawingError if there is no room for so many of `leastBits` each.
    void count(int& value, unsigned leastBits);
    /// The same in other forms of the number.
    void shortCount(int& value, unsigned leastBits);
    void rawLongCount(int& value, unsigned leastBits);
    /// The same for handles.
    void handleCount(int& value);

    BitReader& data() { return m_data; }
    BitReader& handles() { return m_handles; }
    BitWriter& writtenData() { return m_writtenData; }
    BitWriter& writtenHandles() { return m_writtenHandles; }

private:
    void checkCount(int value, std::size_t bitsLeft, unsigned leastBits) const;

    bool m_reading;
    BitReader m_data{""};
    BitReader m_handles{""};
    BitWriter m_writtenData;
    BitWriter m_writtenHandles;
    Handle m_own;
    const TextEncoding& m_encoding;
};

} // namespace drawing::dwg
