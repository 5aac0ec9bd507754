#include "drawing/dwg/bit_transfer.h"

#include <algorithm>
#include <cmath>

#include "drawing/dwg/caret_text.h"
#include "drawing/error.h"

namespace drawing::dwg {

BitTransfer::BitTransfer(BitReader data, BitReader handles, Handle own, const TextEncoding& encoding)
    : m_reading(true), m_data(data), m_handles(handles), m_own(own), m_encoding(encoding)
{}

BitTransfer::BitTransfer(Handle own, const TextEncoding& encoding) : m_reading(false), m_own(own), m_encoding(encoding)
{}

void BitTransfer::bit(bool& value)
{
    if (m_reading) {
        value = m_data.bit();
    } else {
        m_writtenData.bit(value);
    }
}

void BitTransfer::bits(int& value, unsigned count)
{
    if (m_reading) {
        value = static_cast<int>(m_data.bits(count));
    } else {
        m_writtenData.bits(static_cast<unsigned>(value), count);
    }
}

void BitTransfer::byte(int& value)
{
    bits(value, 8);
    value &= 0xFF;
}

void BitTransfer::rawShort(int& value)
{
    if (m_reading) {
        value = static_cast<std::int16_t>(m_data.rawShort());
    } else {
        m_writtenData.rawShort(static_cast<unsigned>(value) & 0xFFFFu);
    }
}

void BitTransfer::rawLong(int& value)
{
    if (m_reading) {
        value = static_cast<int>(m_data.rawLong());
    } else {
        m_writtenData.rawLong(static_cast<std::uint32_t>(value));
    }
}

namespace {

void requireFinite(double value)
{
    if (!std::isfinite(value)) {
        throw DrawingError("a number is not finite");
    }
}

} // namespace

void BitTransfer::rawReal(double& value)
{
    if (m_reading) {
        value = m_data.rawReal();
        requireFinite(value);
    } else {
        m_writtenData.rawReal(value);
    }
}

void BitTransfer::shortNumber(int& value)
{
    if (m_reading) {
        value = m_data.shortNumber();
    } else {
        m_writtenData.shortNumber(value);
    }
}

void BitTransfer::longNumber(int& value)
{
    if (m_reading) {
        value = m_data.longNumber();
    } else {
        m_writtenData.longNumber(value);
    }
}

void BitTransfer::real(double& value)
{
    if (m_reading) {
        value = m_data.real();
        requireFinite(value);
    } else {
        m_writtenData.real(value);
    }
}

void BitTransfer::realNear(double& value, double base)
{
    if (m_reading) {
        value = m_data.realNear(base);
        requireFinite(value);
    } else {
        m_writtenData.realNear(value, base);
    }
}

void BitTransfer::point(Vector3& value)
{
    real(value.x);
    real(value.y);
    real(value.z);
}

void BitTransfer::text(std::string& value)
{
    if (m_reading) {
        value = withCarets(m_encoding.decode(m_data.text()));
    } else {
        m_writtenData.text(m_encoding.encode(withoutCarets(value)));
    }
}

void BitTransfer::bytes(std::string& value, std::size_t count)
{
    if (m_reading) {
        value = m_data.raw(count);
    } else {
        m_writtenData.raw(value);
    }
}

void BitTransfer::handle(Handle& value, Reference kind)
{
    if (m_reading) {
        value = m_handles.handle().target(m_own);
    } else {
        m_writtenHandles.handle({kind, value});
    }
}

void BitTransfer::plainHandle(Handle& value, Reference kind)
{
    if (m_reading) {
        value = m_data.handle().target(m_own);
    } else {
        m_writtenData.handle({kind, value});
    }
}

// So many items may be told in a few bits each; beyond them an item has to have a byte, or little of a file could claim
// much memory.
void BitTransfer::checkCount(int value, std::size_t bitsLeft, unsigned leastBits) const
{
    constexpr std::size_t smallItems = 200'000;
    constexpr std::size_t bitsOfByte = 8;
    const std::size_t room = std::min(bitsLeft / leastBits, smallItems + bitsLeft / bitsOfByte);
    if (m_reading && (value < 0 || static_cast<std::size_t>(value) > room)) {
        throw DrawingError("a count of " + std::to_string(value) + " is more than there is room for");
    }
}

void BitTransfer::count(int& value, unsigned leastBits)
{
    longNumber(value);
    checkCount(value, m_data.left(), leastBits);
}

void BitTransfer::shortCount(int& value, unsigned leastBits)
{
    shortNumber(value);
    value &= 0xFFFF;
    checkCount(value, m_data.left(), leastBits);
}

void BitTransfer::rawLongCount(int& value, unsigned leastBits)
{
    rawLong(value);
    checkCount(value, m_data.left(), leastBits);
}

void BitTransfer::handleCount(int& value)
{
    constexpr unsigned leastBits = 8;
    longNumber(value);
    checkCount(value, m_handles.left(), leastBits);
}

} // namespace drawing::dwg
