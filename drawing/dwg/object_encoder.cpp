#include "drawing/dwg/object_encoder.h"

#include <algorithm>
#include <utility>

#include "drawing/binary_part.h"
#include "drawing/dwg/checksum.h"
#include "drawing/dwg/extended_values.h"
#include "drawing/error.h"

namespace drawing::dwg {

ObjectEncoder::ObjectEncoder(const TextEncoding& encoding, int codePage, RecordNames& names)
    : m_encoding(encoding), m_codePage(codePage), m_names(names)
{}

void ObjectEncoder::putExtendedData(const Object& object, BitWriter& writer)
{
    const auto put = [&](Handle application, const std::string& bytes) {
        constexpr std::size_t mostBytes = 0x7FFF;
        if (bytes.size() > mostBytes) {
            throw DrawingError("the extended data is too long");
        }
        if (!bytes.empty()) {
            writer.shortNumber(static_cast<int>(bytes.size()));
            writer.handle({Reference::HardPointer, application});
            writer.raw(bytes);
        }
    };
    const Groups& groups = object.extendedData;
    for (std::size_t begin = 0; begin < groups.size();) {
        std::size_t end = begin + 1;
        while (end < groups.size() && groups[end].code != 1001) {
            ++end;
        }
        const Groups values(groups.begin() + static_cast<std::ptrdiff_t>(begin) + 1,
                            groups.begin() + static_cast<std::ptrdiff_t>(end));
        const Handle application = m_names.obtain("APPID", groups[begin].value);
        put(application, bytesOfExtendedData(values, m_encoding, m_names, m_codePage));
        begin = end;
    }
    if (object.binary) {
        for (const BinaryPart::Extension& each : object.binary->extensions) {
            put(each.application, each.bytes);
        }
    }
    writer.shortNumber(0);
}

// The head, the fields, what was carried along unread, the handles.
void ObjectEncoder::add(int type, const Object* object, Handle handle, ObjectFields& f)
{
    BitWriter bits;
    bits.shortNumber(type);
    const std::size_t sizePlace = bits.position();
    bits.rawLong(0);
    bits.handle({Reference::Own, handle});
    if (object) {
        putExtendedData(*object, bits);
    } else {
        bits.shortNumber(0);
    }
    bits.rawBits(f.bits.writtenData().bytes(), f.bits.writtenData().position());
    const BinaryPart* part = object ? object->binary.get() : nullptr;
    if (part) {
        bits.rawBits(part->bits, part->bitCount);
    }
    bits.overwriteLong(sizePlace, static_cast<std::uint32_t>(bits.position()));
    bits.rawBits(f.bits.writtenHandles().bytes(), f.bits.writtenHandles().position());
    if (part) {
        for (const BinaryPart::Reference& each : part->references) {
            bits.handle({static_cast<Reference>(each.kind), each.handle});
        }
    }
    BitWriter whole;
    whole.modularShort(bits.bytes().size());
    whole.raw(bits.bytes());
    whole.rawShort(checksum(whole.bytes()));
    m_objects.push_back({handle, whole.takeBytes()});
}

std::vector<EncodedObject> ObjectEncoder::take()
{
    std::sort(m_objects.begin(), m_objects.end(),
              [](const EncodedObject& a, const EncodedObject& b) { return a.handle < b.handle; });
    return std::exchange(m_objects, {});
}

} // namespace drawing::dwg
