#include "drawing/dwg/record_head.h"

namespace drawing::dwg {

namespace {

// Bits of group 70 that all records have.
enum RecordFlag
{
    fromReference = 16,
    resolved = 32,
};

} // namespace

int recordHead(ObjectFields& f)
{
    int flags = 0;
    f.text(2);
    f.take(70, flags);
    bool used = true; // that something refers to the record is no news to DXF
    f.bits.bit(used);
    int place = 0; // in the external reference, from 1
    f.bits.shortNumber(place);
    const int foreign = flagBit(f, flags, fromReference);
    return f.reading() ? foreign | (place > 0 ? resolved : 0) : flags;
}

void externalReference(ObjectFields& f)
{
    Handle none = 0;
    f.bits.handle(none, Reference::HardPointer);
}

int flagBit(ObjectFields& f, int flags, int flag)
{
    bool on = (flags & flag) != 0;
    f.bits.bit(on);
    return on ? flag : 0;
}

} // namespace drawing::dwg
