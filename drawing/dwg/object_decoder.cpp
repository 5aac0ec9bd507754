#include "drawing/dwg/object_decoder.h"

#include <algorithm>

#include "drawing/dwg/anonymous_names.h"
#include "drawing/dwg/checksum.h"
#include "drawing/dwg/extended_values.h"
#include "drawing/error.h"
#include "drawing/field_reader.h"
#include "drawing/numbers.h"
#include "drawing/object_factory.h"
#include "drawing/tables.h"

namespace drawing::dwg {

namespace {

constexpr std::string_view what = "an object";
constexpr std::size_t checksumBytes = 2;

bool isControl(int type)
{
    return std::any_of(tableTypes().begin(), tableTypes().end(),
                       [&](const TableType& each) { return each.control == type; });
}

const TableType* tableOfRecord(int type)
{
    const auto found = std::find_if(tableTypes().begin(), tableTypes().end(),
                                    [&](const TableType& each) { return each.record == type; });
    return found == tableTypes().end() ? nullptr : &*found;
}

// Kinds of objects that all files know and nobody here reads: whether they are entities, and their names.
struct UnreadKind
{
    std::string_view name;
    int type;
    bool entity;
};
constexpr UnreadKind unreadKinds[] = {
    {"SHAPE", 0x21, true},        {"OLEFRAME", 0x2B, true},         {"OLE2FRAME", 0x4A, true},
    {"VBA_PROJECT", 0x51, false}, {"ACAD_PROXY_ENTITY", 498, true}, {"ACAD_PROXY_OBJECT", 499, false},
};

const UnreadKind* unreadKind(int type)
{
    const auto found = std::find_if(std::begin(unreadKinds), std::end(unreadKinds),
                                    [&](const UnreadKind& each) { return each.type == type; });
    return found == std::end(unreadKinds) ? nullptr : found;
}

} // namespace

ObjectDecoder::ObjectDecoder(std::string_view file, const std::vector<ObjectClass>& classes,
                             const TextEncoding& encoding, RecordNames& names, Allowance& allowance)
    : m_file(file), m_classes(classes), m_encoding(encoding), m_names(names), m_allowance(allowance)
{}

// `begin`: of the object's bits in what is given back, behind its length.
std::string_view ObjectDecoder::content(const ObjectPlace& place, std::size_t& begin) const
{
    const std::string_view rest = m_file.substr(place.address);
    BitReader reader(rest, what);
    const std::uint64_t size = reader.modularShort();
    begin = reader.position() / 8;
    if (size > rest.size() || begin + size + checksumBytes > rest.size()) {
        throw DrawingError("the object " + formatHandle(place.handle) + " is longer than the file");
    }
    return rest.substr(0, begin + static_cast<std::size_t>(size));
}

std::size_t ObjectDecoder::checkedEnd(const ObjectPlace& place) const
{
    std::size_t begin = 0;
    const std::string_view all = content(place, begin);
    const std::size_t end = place.address + all.size();
    if (BitReader(m_file.substr(end, checksumBytes), what).rawShort() != checksum(all)) {
        throw DrawingError("the object " + formatHandle(place.handle) + " is damaged: its checksum is another");
    }
    return end + checksumBytes;
}

ObjectDecoder::Head ObjectDecoder::head(const ObjectPlace& place) const
{
    std::size_t begin = 0;
    const std::string_view bytes = content(place, begin).substr(begin);
    Head head;
    head.size = bytes.size();
    head.data = BitReader(bytes, what);
    head.type = head.data.shortNumber();
    const std::size_t handlesBegin = head.data.rawLong();
    if (head.data.handle().value != place.handle) {
        throw DrawingError("the object " + formatHandle(place.handle) + " is not where the map says");
    }
    head.handles = BitReader(bytes, what);
    head.handles.seek(handlesBegin);
    head.data.setEnd(handlesBegin);
    classify(head);
    return head;
}

void ObjectDecoder::classify(Head& head) const
{
    if (head.type >= firstClassType) {
        const auto number = static_cast<std::size_t>(head.type - firstClassType);
        if (number >= m_classes.size()) {
            throw DrawingError("an object is of a class that the file does not tell of");
        }
        head.objectClass = &m_classes[number];
        head.kind = kindOfClass(head.objectClass->recordName);
        // A class must not pass its objects off as another kind of thing than the name says.
        if (head.kind && head.kind->entity != head.objectClass->entity) {
            head.kind = nullptr;
        }
        head.entity = head.objectClass->entity;
        return;
    }
    head.kind = kindOfType(head.type);
    const UnreadKind* unread = unreadKind(head.type);
    head.entity = head.kind ? head.kind->entity : unread && unread->entity;
}

// A failure takes a while, so that a small file of nothing else would take long.
void ObjectDecoder::countFailure()
{
    constexpr std::size_t most = 20'000;
    if (++m_failures > most) {
        throw DrawingError("too many of the objects can't be read");
    }
}

void ObjectDecoder::extendedData(Head& head)
{
    while (const int size = head.data.shortNumber() & 0xFFFF) {
        const Handle application = head.data.handle().value;
        std::string bytes = head.data.raw(static_cast<std::size_t>(size));
        const std::string& name = m_names.nameOf(application);
        Groups values;
        if (!name.empty()) {
            try {
                values = valuesOfExtendedData(bytes, m_encoding, m_names);
                values.insert(values.begin(), {1001, name});
            } catch (const DrawingError&) {
                countFailure();
            }
        }
        for (const Group& each : values) {
            m_allowance.take(Allowance::ofGroup + Allowance::ofText(each.value));
        }
        if (values.empty()) {
            m_allowance.take(Allowance::ofGroup + Allowance::ofText(bytes));
            head.extensions.push_back({application, std::move(bytes)});
        } else {
            std::move(values.begin(), values.end(), std::back_inserter(head.extendedData));
        }
    }
}

void ObjectDecoder::enterName(const ObjectPlace& place, const std::unordered_map<Handle, std::size_t>& blocks)
{
    Head found = head(place);
    const TableType* table = tableOfRecord(found.type);
    if (!table) {
        return;
    }
    while (const int size = found.data.shortNumber() & 0xFFFF) {
        found.data.handle();
        found.data.raw(static_cast<std::size_t>(size));
    }
    found.data.longNumber(); // reactors
    BitTransfer bits(found.data, found.handles, place.handle, m_encoding);
    std::string name;
    bits.text(name);
    if (found.type == blockHeaderType) {
        const auto listed = blocks.find(place.handle);
        if (listed != blocks.end()) {
            name = numberedBlockName(name, listed->second);
        }
    }
    m_names.add(table->kind, name, place.handle);
}

namespace {

// A value has five bytes, or belongs to so many that may be shorter.
std::size_t mostGroups(std::size_t objectSize)
{
    constexpr std::size_t shortGroups = 200'000;
    constexpr std::size_t usualBytes = 5;
    return shortGroups + objectSize / usualBytes;
}

// What is left of an object's bits and handles, none of which anybody understands.
void keepRest(BitReader& data, BitReader& handles, Handle own, BinaryPart& part)
{
    BitWriter rest;
    part.bitCount = data.left();
    while (data.left() > 0) {
        const auto count = static_cast<unsigned>(std::min<std::size_t>(data.left(), 32));
        rest.bits(data.bits(count), count);
    }
    part.bits = rest.takeBytes();
    constexpr std::size_t leastHandleBits = 8;
    constexpr std::size_t usualHandleBits = 32;
    part.references.reserve(handles.left() / usualHandleBits);
    while (handles.left() >= leastHandleBits) {
        const HandleReference reference = handles.handle();
        const bool step = static_cast<unsigned>(reference.kind) >= static_cast<unsigned>(Reference::OneUp);
        part.references.push_back(
            {static_cast<std::uint8_t>(step ? Reference::SoftPointer : reference.kind), reference.target(own)});
    }
}

std::size_t costOf(const BinaryPart& part)
{
    return Allowance::ofText(part.className) + Allowance::ofText(part.bits) +
           part.references.size() * sizeof(BinaryPart::Reference);
}

bool isEmpty(const BinaryPart& part)
{
    return part.bitCount == 0 && part.references.empty() && part.extensions.empty();
}

} // namespace

void ObjectDecoder::structure(ObjectFields& f, const Head& head, DecodedObject& decoded) const
{
    if (isControl(head.type)) {
        decoded.control = std::make_unique<ControlFields>();
        controlFields(f, head.type, *decoded.control);
    } else if (head.type == blockHeaderType) {
        decoded.block = std::make_unique<BlockHeaderFields>();
        blockHeaderFields(f, *decoded.block);
    } else {
        head.kind->fields(f);
    }
}

std::unique_ptr<Object> ObjectDecoder::makeObjectOf(const Head& head, Record& record) const
{
    std::unique_ptr<Object> made;
    if (head.type == blockType || head.type == endBlockType) {
        made = std::make_unique<BlockBracket>(head.type == blockType);
    } else if (head.entity) {
        made = makeEntity(record.name);
    } else if (tableOfRecord(head.type)) {
        made = makeTableRecord(record.name);
    } else {
        made = makeObject(record.name);
    }
    FieldReader(record).read(*made);
    return made;
}

std::size_t ObjectDecoder::decodeFields(const Head& head, DecodedObject& decoded)
{
    const TableType* table = tableOfRecord(head.type);
    Record record{head.kind ? std::string(head.kind->name) : table ? std::string(table->kind) : std::string(), 0, {}};
    ObjectFields f(BitTransfer(head.data, head.handles, decoded.handle, m_encoding), m_names, record,
                   mostGroups(head.size));
    if (head.entity) {
        entityCommon(f, decoded.ties);
    } else {
        objectCommon(f, decoded.ties);
        if (table) {
            f.marker("AcDbSymbolTableRecord");
        }
    }
    structure(f, head, decoded);
    decoded.links = f.links;
    if (isControl(head.type)) {
        return f.cost();
    }
    BinaryPart rest;
    // The handles of an extended record repeat what its groups say.
    if (record.name != "XRECORD") {
        keepRest(f.bits.data(), f.bits.handles(), decoded.handle, rest);
    }
    rest.extensions = head.extensions;
    decoded.object = makeObjectOf(head, record);
    const std::size_t cost = f.cost() + costOf(rest);
    if (!isEmpty(rest)) {
        decoded.object->binary = std::make_shared<const BinaryPart>(std::move(rest));
    }
    return cost;
}

std::size_t ObjectDecoder::decodeRaw(const Head& head, DecodedObject& decoded)
{
    const UnreadKind* unread = unreadKind(head.type);
    Record record{head.objectClass ? head.objectClass->recordName
                  : head.kind      ? std::string(head.kind->name)
                  : unread         ? std::string(unread->name)
                                   : "TYPE" + std::to_string(head.type),
                  0,
                  {}};
    ObjectFields f(BitTransfer(head.data, head.handles, decoded.handle, m_encoding), m_names, record,
                   mostGroups(head.size));
    BinaryPart part;
    decoded.ties = {};
    if (head.entity) {
        entityCommon(f, decoded.ties);
        decoded.object = std::make_unique<RawEntity>(record.name);
    } else {
        objectCommon(f, decoded.ties);
        decoded.object = std::make_unique<RawObject>(record.name);
    }
    FieldReader(record).read(*decoded.object);
    part.whole = true;
    part.type = head.objectClass ? 0 : head.type;
    part.className = head.objectClass ? head.objectClass->className : "";
    keepRest(f.bits.data(), f.bits.handles(), decoded.handle, part);
    part.extensions = head.extensions;
    const std::size_t cost = f.cost() + costOf(part) + Allowance::ofText(record.name);
    decoded.object->binary = std::make_shared<const BinaryPart>(std::move(part));
    return cost;
}

DecodedObject ObjectDecoder::decode(const ObjectPlace& place)
{
    Head found = head(place);
    extendedData(found);
    DecodedObject decoded;
    decoded.type = found.objectClass ? 0 : found.type;
    decoded.handle = place.handle;
    const bool essential = isControl(found.type) || tableOfRecord(found.type);
    std::size_t cost = Allowance::ofObject;
    if (found.kind || essential) {
        try {
            cost += decodeFields(found, decoded);
        } catch (const DrawingError& error) {
            if (essential) {
                throw DrawingError("the object " + formatHandle(place.handle) + ": " + error.what());
            }
            countFailure();
            decoded.unread = true;
            cost += decodeRaw(found, decoded);
        }
    } else {
        cost += decodeRaw(found, decoded);
    }
    m_allowance.take(cost);
    if (decoded.object) {
        Object& object = *decoded.object;
        object.handle = place.handle;
        object.owner = decoded.ties.owner;
        object.reactors = std::move(decoded.ties.reactors);
        object.extensionDictionary = decoded.ties.extensionDictionary;
        object.extendedData = std::move(found.extendedData);
    }
    return decoded;
}

} // namespace drawing::dwg
