#include "drawing/dwg/structure_fields.h"

#include "drawing/dwg/hexadecimal.h"
#include "drawing/dwg/kinds.h"
#include "drawing/dwg/record_head.h"
#include "drawing/tables.h"

namespace drawing::dwg {

namespace {

constexpr int linetypeControl = 0x38;
constexpr int dimensionStyleControl = 0x44;

std::size_t specialCount(int type)
{
    return type == blockControlType || type == linetypeControl ? 2 : 0;
}

} // namespace

void controlFields(ObjectFields& f, int type, ControlFields& control)
{
    auto count = static_cast<int>(control.records.size());
    f.bits.handleCount(count);
    control.records.resize(static_cast<std::size_t>(count));
    int styles = 0; // more handles, as many as styles, that later releases have
    if (type == dimensionStyleControl) {
        f.bits.byte(styles);
    }
    for (Handle& record : control.records) {
        f.bits.handle(record, Reference::SoftOwner);
    }
    control.special.resize(specialCount(type));
    for (Handle& record : control.special) {
        f.bits.handle(record, Reference::HardOwner);
    }
    for (int i = 0; i < styles; ++i) {
        Handle unused = 0;
        f.bits.handle(unused, Reference::HardPointer);
    }
}

namespace {

// One non-zero byte for each reference, and a zero behind them.
int referenceCount(ObjectFields& f, const BlockHeaderFields& block)
{
    if (!f.reading()) {
        for (std::size_t i = 0; i < block.references.size(); ++i) {
            f.bits.writtenData().byte(1);
        }
        f.bits.writtenData().byte(0);
        return static_cast<int>(block.references.size());
    }
    int count = 0;
    while (f.bits.data().byte() != 0) {
        ++count;
    }
    return count;
}

void picture(ObjectFields& f)
{
    std::string bytes;
    for (const PlacedGroup& chunk : f.takeAll({310})) {
        bytes += bytesOfHexadecimal(chunk.value);
    }
    constexpr unsigned bitsOfByte = 8;
    auto size = static_cast<int>(bytes.size());
    f.bits.count(size, bitsOfByte);
    f.bits.bytes(bytes, static_cast<std::size_t>(size));
    constexpr std::size_t chunkBytes = 127;
    for (std::size_t begin = 0; begin < bytes.size(); begin += chunkBytes) {
        f.give(310, hexadecimal(std::string_view(bytes).substr(begin, chunkBytes)));
    }
}

} // namespace

void blockHeaderFields(ObjectFields& f, BlockHeaderFields& block)
{
    f.marker("AcDbBlockTableRecord");
    recordHead(f);
    const int flags = block.flags;
    block.flags = flagBit(f, flags, Block::anonymous);
    block.flags |= flagBit(f, flags, Block::hasAttributes);
    block.flags |= flagBit(f, flags, Block::externalReference);
    block.flags |= flagBit(f, flags, Block::externalOverlay);
    bool unloaded = false;
    f.bits.bit(unloaded);
    f.bits.point(block.basePoint);
    f.bits.text(block.externalPath);
    const int references = referenceCount(f, block);
    f.bits.text(block.description);
    picture(f);
    externalReference(f);
    f.bits.handle(block.begin, Reference::HardOwner);
    if ((block.flags & (Block::externalReference | Block::externalOverlay)) == 0) {
        f.bits.handle(block.first, Reference::SoftPointer);
        f.bits.handle(block.last, Reference::SoftPointer);
    }
    f.bits.handle(block.end, Reference::HardOwner);
    block.references.resize(static_cast<std::size_t>(references));
    for (Handle& reference : block.references) {
        f.bits.handle(reference, Reference::SoftPointer);
    }
    f.handle(340, Reference::HardPointer);
}

void viewportEntryFields(ObjectFields& f, ViewportEntryFields& entry)
{
    recordHead(f);
    f.bits.bit(entry.on);
    externalReference(f);
    f.bits.handle(entry.viewport, Reference::SoftPointer);
    f.bits.handle(entry.next, Reference::HardPointer);
}

} // namespace drawing::dwg
