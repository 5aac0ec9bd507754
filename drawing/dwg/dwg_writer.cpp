#include "drawing/dwg/dwg_writer.h"

#include <algorithm>
#include <memory>

#include "drawing/binary_part.h"
#include "drawing/dwg/anonymous_names.h"
#include "drawing/dwg/checksum.h"
#include "drawing/dwg/extended_values.h"
#include "drawing/dwg/hexadecimal.h"
#include "drawing/dwg/kinds.h"
#include "drawing/dwg/table_roots.h"
#include "drawing/dwg/trailing_sections.h"
#include "drawing/error.h"
#include "drawing/field_writer.h"
#include "drawing/known_classes.h"
#include "drawing/lower_case.h"
#include "drawing/numbers.h"

namespace drawing::dwg {

namespace {

// The program that the file says has written it: one whose drawings of this release the host takes.
constexpr int writerVersion = 0x1F;
constexpr int maintenance = 8;

/// Gathers the groups of one object as a record.
class RecordSink final : public GroupSink
{
public:
    explicit RecordSink(Record& record) : m_record(record) {}

    void group(int code, std::string_view value) override
    {
        if (code == 0) {
            m_record.name = value;
        } else {
            m_record.groups.push_back({{code, std::string(value)}, 0});
        }
    }

private:
    Record& m_record;
};

Record recordOf(const Object& object, const std::string& blockName = {})
{
    Record record;
    RecordSink sink(record);
    FieldWriter writer(sink);
    writer.context.blockName = blockName;
    writer.write(object);
    return record;
}

/// What is wrong with one object, which is then left out.
struct UnwritableObject
{
    Handle handle;
    std::string name;
};

const TableType& tableType(std::string_view kind)
{
    return *std::find_if(tableTypes().begin(), tableTypes().end(),
                         [&](const TableType& each) { return each.kind == kind; });
}

} // namespace

DwgWriter::DwgWriter(const Document& document)
    : m_document(document), m_codePage(windowsCodePageName(document)), m_encoding(m_codePage)
{}

// An object that has no place in the form is left out, and with it every mention of it.
std::string DwgWriter::write()
{
    constexpr std::size_t mostLeftOut = 100;
    while (true) {
        try {
            return attempt();
        } catch (const UnwritableObject& object) {
            if (m_leftOut.size() > mostLeftOut) {
                throw DrawingError("too many objects have no place in this form");
            }
            m_leftOut.emplace(object.handle, object.name);
        }
    }
}

Notes DwgWriter::notes() const
{
    std::map<std::string, std::size_t> counts;
    for (const auto& [handle, name] : m_leftOut) {
        ++counts[name];
    }
    for (const Handle handle : m_document.objects()) {
        const Object* object = m_document.find(handle);
        if (object && !m_leftOut.contains(handle) && !canWrite(*object)) {
            ++counts[std::string(object->name())];
        }
    }
    for (const Handle handle : m_document.table("BLOCK_RECORD").records) {
        const auto* block = m_document.find<Block>(handle);
        for (const Handle entity : block ? block->entities : std::vector<Handle>()) {
            const Object* object = m_document.find(entity);
            if (object && !m_leftOut.contains(entity) && !canWrite(*object)) {
                ++counts[std::string(object->name())];
            }
        }
    }
    Notes notes;
    for (const auto& [name, count] : counts) {
        notes.push_back(std::to_string(count) + " of the objects " + name +
                        " have no place in the binary form and were left out.");
    }
    return notes;
}

std::string DwgWriter::attempt()
{
    m_names = RecordNames(m_document.handleSeed());
    m_written.clear();
    m_madeRecords.clear();
    m_references.clear();
    m_viewportControl = m_names.reserve();
    enterNames();
    collectClasses();
    collectReferences();
    for (const Handle handle : m_document.table("BLOCK_RECORD").records) {
        if (const auto* block = m_document.find<Block>(handle)) {
            writeBlock(*block);
        }
    }
    writeObjects();
    writeTables();
    return assemble();
}

void DwgWriter::enterNames()
{
    for (const Handle handle : m_document.tables()) {
        const auto& table = *m_document.find<Table>(handle);
        for (const Handle record : table.records) {
            if (const auto* found = m_document.find<TableRecord>(record)) {
                m_names.add(table.kind, found->recordName, record);
            }
        }
    }
    std::vector<Handle> linetypes;
    for (const Handle record : m_document.table("LTYPE").records) {
        const std::string lower = lowerCase(m_names.nameOf(record));
        if (lower != "bylayer" && lower != "byblock") {
            linetypes.push_back(record);
        }
    }
    m_names.setLinetypes(std::move(linetypes));
    const Dictionary& root = m_document.rootDictionary();
    if (const auto* styles = m_document.find<Dictionary>(root.find("ACAD_MLINESTYLE"))) {
        for (const Dictionary::Entry& entry : styles->entries) {
            m_names.add("MLINESTYLE", entry.key, entry.object);
        }
    }
}

void DwgWriter::collectClasses()
{
    m_classes.clear();
    const auto add = [&](ObjectClass each) {
        const bool present = std::any_of(m_classes.begin(), m_classes.end(), [&](const ObjectClass& other) {
            return other.recordName == each.recordName && other.className == each.className;
        });
        if (!present) {
            each.number = firstClassType + static_cast<int>(m_classes.size());
            m_classes.push_back(std::move(each));
        }
    };
    for (const Groups& groups : m_document.classes) {
        add(classOfGroups(groups));
    }
    for (const KnownClass& known : knownClasses()) {
        ObjectClass each;
        each.recordName = known.name;
        each.className = known.className;
        each.application = known.application;
        each.flags = known.flags;
        each.entity = known.entity;
        if (classType(known.name, "") == 0) {
            add(std::move(each));
        }
    }
}

int DwgWriter::classType(std::string_view recordName, std::string_view className) const
{
    for (const ObjectClass& each : m_classes) {
        if (each.recordName == recordName && (className.empty() || each.className == className)) {
            return each.number;
        }
    }
    return 0;
}

// A block lists the references that show it.
void DwgWriter::collectReferences()
{
    for (const Handle handle : m_document.table("BLOCK_RECORD").records) {
        const auto* block = m_document.find<Block>(handle);
        for (const Handle entity : block ? block->entities : std::vector<Handle>()) {
            if (const auto* reference = m_document.find<BlockReference>(entity)) {
                if (const Handle shown = m_names.find("BLOCK_RECORD", reference->block)) {
                    m_references[shown].push_back(entity);
                }
            }
        }
    }
}

bool DwgWriter::canWrite(const Object& object) const
{
    if (m_leftOut.contains(object.handle)) {
        return false;
    }
    if (isOnlyBinary(object)) {
        return object.binary->type != 0 || classType(object.name(), object.binary->className) != 0;
    }
    return kindOfClass(object.name()) != nullptr;
}

std::vector<Handle> DwgWriter::writable(const std::vector<Handle>& handles) const
{
    std::vector<Handle> result;
    for (const Handle handle : handles) {
        const Object* object = m_document.find(handle);
        if (object && canWrite(*object)) {
            result.push_back(handle);
        }
    }
    return result;
}

void DwgWriter::writeBlock(const Block& block)
{
    const std::vector<Handle> entities = writable(block.entities);
    const int space = block.handle == m_document.modelSpace().handle   ? modelSpace
                      : block.handle == m_document.paperSpace().handle ? paperSpace
                                                                       : ownerSaid;
    writeBlockHeader(block, entities);
    for (const Handle bracket : {block.begin, block.end}) {
        const auto* found = m_document.find<BlockBracket>(bracket);
        if (!found) {
            throw DrawingError("the block " + block.recordName + " has no beginning or no end");
        }
        Ties ties;
        ties.owner = block.handle;
        ties.space = space;
        writeEntity(*found, ties);
    }
    writeChain(entities, block.handle, space);
}

void DwgWriter::writeBlockHeader(const Block& block, const std::vector<Handle>& entities)
{
    BlockHeaderFields fields;
    if (const auto* begin = m_document.find<BlockBracket>(block.begin)) {
        fields.flags = begin->flags;
        fields.basePoint = begin->basePoint;
        fields.externalPath = begin->externalPath;
        fields.description = begin->description;
    }
    fields.begin = block.begin;
    fields.end = block.end;
    fields.first = entities.empty() ? 0 : entities.front();
    fields.last = entities.empty() ? 0 : entities.back();
    for (const Handle reference : m_references[block.handle]) {
        if (canWrite(*m_document.find(reference))) {
            fields.references.push_back(reference);
        }
    }
    Block stored = block;
    stored.recordName = storedBlockName(block.recordName);
    Record record = recordOf(stored);
    ObjectFields f(block.handle, m_encoding, m_names, record);
    Ties ties{m_document.table("BLOCK_RECORD").handle, block.reactors, block.extensionDictionary};
    objectCommon(f, ties);
    blockHeaderFields(f, fields);
    finish(blockHeaderType, &block, block.handle, f);
}

void DwgWriter::writeChain(const std::vector<Handle>& entities, Handle owner, int space)
{
    for (std::size_t i = 0; i < entities.size(); ++i) {
        Ties ties;
        ties.owner = owner;
        ties.space = space;
        ties.previous = i > 0 ? entities[i - 1] : 0;
        ties.next = i + 1 < entities.size() ? entities[i + 1] : 0;
        ties.neighboursAdjacent = ties.previous + 1 == entities[i] && ties.next == entities[i] + 1;
        writeEntity(*m_document.find<Entity>(entities[i]), ties);
    }
}

void DwgWriter::writeEntity(const Entity& entity, const Ties& ties)
{
    std::vector<Handle> parts;
    Links links;
    if (const auto* polyline = dynamic_cast<const HeavyPolyline*>(&entity)) {
        parts = writable(polyline->vertices);
        links.sequenceEnd = polyline->sequenceEnd;
    } else if (const auto* reference = dynamic_cast<const BlockReference*>(&entity)) {
        parts = writable(reference->attributes);
        links.sequenceEnd = reference->sequenceEnd;
        links.hasParts = reference->sequenceEnd != 0;
    }
    links.first = parts.empty() ? 0 : parts.front();
    links.last = parts.empty() ? 0 : parts.back();
    writeObject(entity, ties, links);
    writeChain(parts, entity.handle, ownerSaid);
    if (const auto* end = m_document.find<SequenceEnd>(links.sequenceEnd)) {
        Ties tiesOfEnd;
        tiesOfEnd.owner = entity.handle;
        writeEntity(*end, tiesOfEnd);
    }
}

void DwgWriter::writeObjects()
{
    for (const Handle handle : writable(m_document.objects())) {
        const Object& object = *m_document.find(handle);
        const auto* dictionary = dynamic_cast<const Dictionary*>(&object);
        if (!dictionary) {
            writeObject(object, {}, {});
            continue;
        }
        Dictionary copy = *dictionary;
        std::erase_if(copy.entries, [&](const Dictionary::Entry& entry) {
            const Object* held = m_document.find(entry.object);
            return held && !canWrite(*held);
        });
        writeObject(copy, {}, {});
    }
}

void DwgWriter::writeObject(const Object& object, Ties ties, Links links)
{
    const bool entity = dynamic_cast<const Entity*>(&object) != nullptr;
    try {
        const auto* bracket = dynamic_cast<const BlockBracket*>(&object);
        const auto* block = bracket ? m_document.find<Block>(bracket->owner) : nullptr;
        Record record = recordOf(object, block ? storedBlockName(block->recordName) : std::string());
        ObjectFields f(object.handle, m_encoding, m_names, record);
        f.links = links;
        ties.reactors = object.reactors;
        ties.extensionDictionary = object.extensionDictionary;
        if (entity) {
            entityCommon(f, ties);
        } else {
            ties.owner = m_document.find(object.owner) ? object.owner : 0;
            objectCommon(f, ties);
        }
        int type = 0;
        if (isOnlyBinary(object)) {
            type = object.binary->type != 0 ? object.binary->type : classType(object.name(), object.binary->className);
        } else {
            const Kind* kind = kindOfRecord(record);
            if (!kind) {
                throw DrawingError("the kind is unknown");
            }
            kind->fields(f);
            type = kind->type != 0 ? kind->type : classType(object.name(), "");
        }
        finish(type, &object, object.handle, f);
    } catch (const DrawingError&) {
        // Without its header or its brackets a block would be none.
        if (dynamic_cast<const TableRecord*>(&object) || dynamic_cast<const BlockBracket*>(&object) ||
            dynamic_cast<const SequenceEnd*>(&object) || &object == &m_document.rootDictionary()) {
            throw;
        }
        throw UnwritableObject{object.handle, std::string(object.name())};
    }
}

void DwgWriter::extendedData(const Object& object, BitWriter& writer)
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
        put(application, bytesOfExtendedData(values, m_encoding, m_names, codePageNumberOf(m_codePage)));
        begin = end;
    }
    if (object.binary) {
        for (const BinaryPart::Extension& each : object.binary->extensions) {
            put(each.application, each.bytes);
        }
    }
    writer.shortNumber(0);
}

// Puts an object's bits together: the head, the fields, what was carried along unread, the handles.
void DwgWriter::finish(int type, const Object* object, Handle handle, ObjectFields& f)
{
    BitWriter bits;
    bits.shortNumber(type);
    const std::size_t sizePlace = bits.position();
    bits.rawLong(0);
    bits.handle({Reference::Own, handle});
    if (object) {
        extendedData(*object, bits);
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
    m_written.push_back({handle, whole.takeBytes()});
}

// Records first, as they may name others; those that are named and missing are made; then the tables themselves.
void DwgWriter::writeTables()
{
    for (const Handle handle : m_document.tables()) {
        const auto& table = *m_document.find<Table>(handle);
        for (const Handle record : table.records) {
            const Object* found = m_document.find(record);
            if (found && table.kind != "BLOCK_RECORD") {
                writeObject(*found, {}, {});
            }
        }
    }
    writeMadeRecords();
    for (const Handle handle : m_document.tables()) {
        writeControl(*m_document.find<Table>(handle));
    }
    writeViewportControl();
}

namespace {

std::unique_ptr<TableRecord> madeRecord(const RecordNames::Record& of, const Document& document)
{
    std::unique_ptr<TableRecord> made;
    if (of.kind == "LAYER") {
        auto layer = std::make_unique<Layer>();
        if (const Layer* first = document.findLayer("0")) {
            layer->plotStyle = first->plotStyle;
        }
        made = std::move(layer);
    } else if (of.kind == "LTYPE") {
        made = std::make_unique<Linetype>();
    } else if (of.kind == "STYLE") {
        auto style = std::make_unique<TextStyle>();
        style->font = "txt";
        made = std::move(style);
    } else {
        made = std::make_unique<RawTableRecord>(of.kind);
    }
    made->recordName = of.name;
    made->handle = of.handle;
    made->owner = document.table(of.kind).handle;
    return made;
}

} // namespace

void DwgWriter::writeMadeRecords()
{
    for (std::size_t i = 0; i < m_names.made().size(); ++i) {
        const RecordNames::Record of = m_names.made()[i];
        const auto record = madeRecord(of, m_document);
        m_madeRecords[of.kind].push_back(of.handle);
        writeObject(*record, {}, {});
    }
}

void DwgWriter::writeControl(const Table& table)
{
    ControlFields control;
    control.records = table.records;
    const auto& made = m_madeRecords[table.kind];
    control.records.insert(control.records.end(), made.begin(), made.end());
    const auto setApart = [&](Handle record) {
        std::erase(control.records, record);
        control.special.push_back(record);
    };
    if (table.kind == "BLOCK_RECORD") {
        setApart(m_document.modelSpace().handle);
        setApart(m_document.paperSpace().handle);
    } else if (table.kind == "LTYPE") {
        setApart(m_names.find("LTYPE", "ByBlock"));
        setApart(m_names.find("LTYPE", "ByLayer"));
    }
    Record record;
    ObjectFields f(table.handle, m_encoding, m_names, record);
    Ties ties{0, table.reactors, table.extensionDictionary};
    objectCommon(f, ties);
    const int type = tableType(table.kind).control;
    controlFields(f, type, control);
    finish(type, nullptr, table.handle, f);
}

void DwgWriter::writeViewportControl()
{
    Record record;
    ObjectFields f(m_viewportControl, m_encoding, m_names, record);
    Ties ties;
    ControlFields none;
    objectCommon(f, ties);
    controlFields(f, viewportHeaderControlType, none);
    finish(viewportHeaderControlType, nullptr, m_viewportControl, f);
}

Roots DwgWriter::roots() const
{
    constexpr std::pair<std::string_view, Root> dictionaries[] = {{"ACAD_GROUP", Root::GroupDictionary},
                                                                  {"ACAD_MLINESTYLE", Root::MultilineStyleDictionary},
                                                                  {"ACAD_LAYOUT", Root::LayoutDictionary},
                                                                  {"ACAD_PLOTSETTINGS", Root::PlotSettingsDictionary},
                                                                  {"ACAD_PLOTSTYLENAME", Root::PlotStyleDictionary}};
    Roots roots;
    for (const auto& [kind, root] : tableRoots) {
        roots[root] = m_document.table(kind).handle;
    }
    for (const auto& [key, root] : dictionaries) {
        roots[root] = m_document.rootDictionary().find(key);
    }
    roots[Root::ViewportHeaderControl] = m_viewportControl;
    roots[Root::NamedObjects] = m_document.rootDictionary().handle;
    roots[Root::PaperSpace] = m_document.paperSpace().handle;
    roots[Root::ModelSpace] = m_document.modelSpace().handle;
    roots[Root::ByLayer] = m_names.find("LTYPE", "ByLayer");
    roots[Root::ByBlock] = m_names.find("LTYPE", "ByBlock");
    roots[Root::Continuous] = m_names.find("LTYPE", "Continuous");
    return roots;
}

namespace {

std::optional<std::string> previewOf(const Document& document)
{
    for (const Document::RawSection& section : document.rawSections) {
        std::string bitmap;
        for (const Group& group : section.groups) {
            bitmap += section.name == "THUMBNAILIMAGE" && group.code == 310 ? bytesOfHexadecimal(group.value) : "";
        }
        if (!bitmap.empty()) {
            return bitmap;
        }
    }
    return std::nullopt;
}

// A part of the file is put behind the others, and its place is noted down.
SectionPlace append(std::string& file, const std::string& section)
{
    const SectionPlace place{static_cast<std::uint32_t>(file.size()), static_cast<std::uint32_t>(section.size())};
    file += section;
    return place;
}

} // namespace

std::string DwgWriter::assemble()
{
    const HeaderVariables& variables = m_document.header;
    HeaderSection section;
    section.variables = variables;
    section.roots = roots();
    section.handleSeed = m_names.next();
    FileHeader header;
    header.writerVersion = writerVersion;
    header.maintenance = maintenance;
    header.codePage = codePageNumberOf(m_codePage);

    std::string file(fileHeaderSize, '\0');
    const AuxiliaryHeader auxiliary{
        writerVersion, maintenance, 1, variables.real("$TDCREATE"), variables.real("$TDUPDATE"), section.handleSeed};
    header.sections[auxiliaryHeaderSection] = append(file, writeAuxiliaryHeader(auxiliary));
    header.previewAddress = static_cast<std::uint32_t>(file.size());
    append(file, writePreview(previewOf(m_document), header.previewAddress));
    header.sections[headerVariablesSection] =
        append(file, markedSection(writeHeaderSection(section, m_encoding, m_names), Marked::HeaderVariables));
    header.sections[classesSection] = append(file, markedSection(writeClasses(m_classes, m_encoding), Marked::Classes));
    std::sort(m_written.begin(), m_written.end(),
              [](const Written& a, const Written& b) { return a.handle < b.handle; });
    std::vector<ObjectPlace> places;
    for (const Written& object : m_written) {
        constexpr std::size_t largestFile = 0x7FFFFFFF;
        if (file.size() > largestFile - object.bytes.size()) {
            throw DrawingError("the drawing is too large for this form");
        }
        places.push_back({object.handle, file.size()});
        file += object.bytes;
    }
    header.sections[objectMapSection] = append(file, writeObjectMap(places));
    const auto second = static_cast<std::uint32_t>(file.size());
    std::string tail = writeTemplate(variables.integer("$MEASUREMENT"));
    file += writeSecondHeader(header, section.roots, section.handleSeed, second);
    header.sections[templateSection] = append(file, tail);
    file.replace(0, fileHeaderSize, writeFileHeader(header));
    return file;
}

} // namespace drawing::dwg
