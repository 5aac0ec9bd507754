#include "drawing/dwg/dwg_reader.h"

#include <algorithm>
#include <string>

#include "drawing/block_cycles.h"
#include "drawing/dwg/header_section.h"
#include "drawing/dwg/hexadecimal.h"
#include "drawing/dwg/table_roots.h"
#include "drawing/dwg/trailing_sections.h"
#include "drawing/error.h"
#include "drawing/lower_case.h"
#include "drawing/numbers.h"

namespace drawing::dwg {

namespace {

// The tables in the order in which DXF has them.
constexpr std::string_view tableOrder[] = {"VPORT", "LTYPE", "LAYER",    "STYLE",       "VIEW",
                                           "UCS",   "APPID", "DIMSTYLE", "BLOCK_RECORD"};

Root rootOf(std::string_view kind)
{
    return std::find_if(std::begin(tableRoots), std::end(tableRoots),
                        [&](const auto& each) { return each.first == kind; })
        ->second;
}

} // namespace

DwgReader::DwgReader(std::string_view bytes)
    : m_bytes(bytes), m_header(readFileHeader(bytes)), m_encoding(codePageName(m_header.codePage)),
      m_allowance(bytes.size())
{}

Document DwgReader::read()
{
    readClassSection();
    m_places = readObjectMap(m_bytes, m_header.sections[objectMapSection]);
    checkPlaces();
    readNames();
    readObjects();
    buildTables();
    readHeader();
    buildBlocks();
    buildRest();
    allowForCompletion();
    checkCycles();
    readPreview();
    return m_builder.complete();
}

Notes DwgReader::notes() const
{
    Notes notes = m_mendings.sentences();
    for (const auto& [kind, count] : m_unread) {
        notes.push_back(std::to_string(count) + " of the objects " + kind +
                        " could not be read; they are carried along unread.");
    }
    return notes;
}

void DwgReader::readClassSection()
{
    m_classes = readClasses(
        markedContent(m_bytes, m_header.sections[classesSection], Marked::Classes, "the list of classes"), m_encoding);
    for (const ObjectClass& each : m_classes) {
        m_builder.document().classes.push_back(groupsOfClass(each));
    }
}

std::string_view DwgReader::headerContent() const
{
    return markedContent(m_bytes, m_header.sections[headerVariablesSection], Marked::HeaderVariables,
                         "the section of the header variables");
}

// Every object is whole, and no two share bytes, which bounds what all of them together hold.
void DwgReader::checkPlaces() const
{
    RecordNames names;
    Allowance allowance(0);
    const ObjectDecoder decoder(m_bytes, m_classes, m_encoding, names, allowance);
    std::vector<ObjectPlace> places = m_places;
    std::sort(places.begin(), places.end(),
              [](const ObjectPlace& a, const ObjectPlace& b) { return a.address < b.address; });
    std::size_t end = 0;
    for (const ObjectPlace& each : places) {
        if (each.address < end) {
            throw DrawingError("the object " + formatHandle(each.handle) + " lies over another");
        }
        end = decoder.checkedEnd(each);
    }
}

std::vector<ObjectPlace>::const_iterator DwgReader::placeOf(Handle handle) const
{
    const auto found = std::lower_bound(m_places.begin(), m_places.end(), handle,
                                        [](const ObjectPlace& place, Handle sought) { return place.handle < sought; });
    return found != m_places.end() && found->handle == handle ? found : m_places.end();
}

// The records of a table, before all objects are read; none if there is no such table.
std::vector<Handle> DwgReader::recordsAhead(ObjectDecoder& decoder, Handle control) const
{
    const auto place = placeOf(control);
    const DecodedObject decoded = place != m_places.end() ? decoder.decode(*place) : DecodedObject();
    return decoded.control ? decoded.control->records : std::vector<Handle>();
}

void DwgReader::readNames()
{
    const Roots roots = readRoots(headerContent(), m_encoding);
    ObjectDecoder decoder(m_bytes, m_classes, m_encoding, m_names, m_allowance);
    std::unordered_map<Handle, std::size_t> blocks;
    for (const Handle block : recordsAhead(decoder, roots[Root::BlockControl])) {
        blocks.try_emplace(block, blocks.size());
    }
    for (const ObjectPlace& each : m_places) {
        decoder.enterName(each, blocks);
    }
    // Multiline styles count the linetypes in the order of their table.
    m_names.setLinetypes(recordsAhead(decoder, roots[Root::LinetypeControl]));
    const auto styles = placeOf(roots[Root::MultilineStyleDictionary]);
    const DecodedObject decoded = styles != m_places.end() ? decoder.decode(*styles) : DecodedObject();
    if (const auto* dictionary = dynamic_cast<const Dictionary*>(decoded.object.get())) {
        for (const Dictionary::Entry& entry : dictionary->entries) {
            m_names.add("MLINESTYLE", entry.key, entry.object);
        }
    }
}

void DwgReader::readObjects()
{
    ObjectDecoder decoder(m_bytes, m_classes, m_encoding, m_names, m_allowance);
    m_objects.reserve(m_places.size());
    for (const ObjectPlace& each : m_places) {
        const DecodedObject& object = m_objects.emplace_back(decoder.decode(each));
        if (object.unread) {
            ++m_unread[std::string(object.object->name())];
        }
    }
}

DecodedObject* DwgReader::decoded(Handle handle)
{
    const auto found = placeOf(handle);
    return found == m_places.end() ? nullptr : &m_objects[static_cast<std::size_t>(found - m_places.begin())];
}

// Moves an object into the drawing; null if there is none of that class, or it was moved before.
template <class T> T* DwgReader::storeAs(Handle handle, Handle owner)
{
    DecodedObject* found = decoded(handle);
    if (!found || !dynamic_cast<T*>(found->object.get())) {
        return nullptr;
    }
    found->object->owner = owner;
    return static_cast<T*>(&m_builder.store(std::move(found->object)));
}

void DwgReader::buildTables()
{
    const Roots roots = readRoots(headerContent(), m_encoding);
    for (const std::string_view kind : tableOrder) {
        const Handle handle = roots[rootOf(kind)];
        DecodedObject* control = decoded(handle);
        const auto type = std::find_if(tableTypes().begin(), tableTypes().end(),
                                       [&](const TableType& each) { return each.kind == kind; });
        if (!control || control->type != type->control || !control->control) {
            throw DrawingError("the table " + std::string(kind) + " is missing");
        }
        auto made = std::make_unique<Table>(std::string(kind));
        made->handle = handle;
        made->extensionDictionary = control->ties.extensionDictionary;
        Table& table = m_builder.addTable(std::move(made));
        const std::unique_ptr<ControlFields> fields = std::move(control->control);
        std::vector<Handle> records = fields->special;
        records.insert(records.end(), fields->records.begin(), fields->records.end());
        for (const Handle record : records) {
            const DecodedObject* found = decoded(record);
            auto* stored = found && found->type == type->record ? storeAs<TableRecord>(record, handle) : nullptr;
            if (stored) {
                stored->recordName = m_names.nameOf(record);
                table.records.push_back(record);
            }
        }
    }
}

void DwgReader::readHeader()
{
    Document& document = m_builder.document();
    HeaderSection section = readHeaderSection(headerContent(), m_encoding, m_names);
    document.header.setText("$ACADVER", release2000);
    document.header.setInteger("$ACADMAINTVER", m_header.maintenance);
    document.header.setText("$DWGCODEPAGE", codePageName(m_header.codePage), 3);
    for (const HeaderVariables::Variable& each : section.variables.all()) {
        document.header.append(each);
    }
    document.raiseHandleSeed(m_places.back().handle + 1);
    document.header.setText("$HANDSEED", formatHandle(section.handleSeed), 5);
    document.header.setInteger("$MEASUREMENT",
                               readMeasurement(bytesAt(m_bytes, m_header.sections[templateSection], "the template")));
    if (section.handleSeed <= highestHandleTaken) {
        document.raiseHandleSeed(section.handleSeed);
    } else {
        m_mendings.add(Mending::HandleSeed);
    }
}

// The entities from the first to the last, each of which tells the next. All have to be of that kind and in no chain
// before, so that the chains of a file are together no longer than it has entities.
template <class Kind> std::vector<Handle> DwgReader::chain(Handle first, Handle last, Handle owner)
{
    std::vector<Handle> handles;
    for (Handle at = first; at != 0 && handles.size() < m_objects.size();) {
        const DecodedObject* entity = decoded(at);
        if (!entity || !dynamic_cast<const Kind*>(entity->object.get())) {
            break;
        }
        handles.push_back(at);
        if (at == last) {
            return handles;
        }
        at = entity->ties.neighboursAdjacent ? at + 1 : entity->ties.next;
    }
    if (first != 0) {
        throw DrawingError("the entities that belong to the object " + formatHandle(owner) + " do not hang together");
    }
    return handles;
}

void DwgReader::buildBlocks()
{
    Document& document = m_builder.document();
    for (const Handle handle : document.table("BLOCK_RECORD").records) {
        buildBlock(*document.find<Block>(handle));
    }
}

void DwgReader::buildBlock(Block& block)
{
    const std::unique_ptr<BlockHeaderFields> fields = std::move(decoded(block.handle)->block);
    const BlockHeaderFields& header = *fields;
    if (auto* begin = storeAs<BlockBracket>(header.begin, block.handle)) {
        block.begin = header.begin;
        begin->flags = header.flags;
        begin->basePoint = header.basePoint;
        begin->externalPath = header.externalPath;
        begin->description = header.description;
    }
    if (storeAs<BlockBracket>(header.end, block.handle)) {
        block.end = header.end;
    }
    for (const Handle handle : chain<Entity>(header.first, header.last, block.handle)) {
        auto* entity = storeAs<Entity>(handle, block.handle);
        if (!entity) {
            throw DrawingError("the entity " + formatHandle(handle) + " belongs to two others");
        }
        block.entities.push_back(handle);
        buildEntity(*entity);
    }
    numberViewports(block);
}

// DXF numbers the viewports of a sheet, and the first one stands for the sheet itself.
void DwgReader::numberViewports(const Block& block)
{
    int number = 0;
    for (const Handle handle : block.entities) {
        if (auto* viewport = m_builder.document().find<Viewport>(handle)) {
            viewport->number = ++number;
            viewport->status = viewport->flags & Viewport::offFlag ? 0 : number;
        }
    }
}

void DwgReader::buildEntity(Entity& entity)
{
    const Links links = decoded(entity.handle)->links;
    const auto sequenceEnd = [&]() -> Handle {
        if (storeAs<SequenceEnd>(links.sequenceEnd, entity.handle)) {
            return links.sequenceEnd;
        }
        m_mendings.add(Mending::SequenceEnd);
        m_allowance.take(Allowance::ofObject + Allowance::ofText(entity.layer));
        auto made = std::make_unique<SequenceEnd>();
        made->layer = entity.layer;
        made->owner = entity.handle;
        return m_builder.store(std::move(made)).handle;
    };
    if (auto* polyline = dynamic_cast<HeavyPolyline*>(&entity)) {
        for (const Handle vertex : chain<Vertex>(links.first, links.last, entity.handle)) {
            if (storeAs<Vertex>(vertex, entity.handle)) {
                polyline->vertices.push_back(vertex);
            }
        }
        polyline->sequenceEnd = sequenceEnd();
    } else if (auto* reference = dynamic_cast<BlockReference*>(&entity); reference && links.hasParts) {
        for (const Handle attribute : chain<Attribute>(links.first, links.last, entity.handle)) {
            if (storeAs<Attribute>(attribute, entity.handle)) {
                reference->attributes.push_back(attribute);
            }
        }
        reference->sequenceEnd = sequenceEnd();
    }
}

// Objects of no table and no block, in the order of their handles.
void DwgReader::buildRest()
{
    for (DecodedObject& object : m_objects) {
        // The list of viewports follows from the layouts.
        const bool viewportList = object.type == viewportHeaderControlType || object.type == viewportHeaderType;
        if (viewportList || !object.object || dynamic_cast<Entity*>(object.object.get()) ||
            dynamic_cast<TableRecord*>(object.object.get())) {
            continue;
        }
        if (auto* reactor = dynamic_cast<ImageDefinitionReactor*>(object.object.get())) {
            reactor->image = reactor->owner;
        }
        m_builder.store(std::move(object.object));
        m_builder.list(object.handle);
    }
}

void DwgReader::checkCycles() const
{
    const Document& document = const_cast<DwgReader*>(this)->m_builder.document();
    std::unordered_map<std::string, Handle> blocks;
    const auto& records = document.table("BLOCK_RECORD").records;
    for (const Handle handle : records) {
        blocks.try_emplace(lowerCase(document.find<Block>(handle)->recordName), handle);
    }
    std::vector<BlockEdge> edges;
    for (const Handle handle : records) {
        for (const Handle entity : document.find<Block>(handle)->entities) {
            const auto* reference = document.find<BlockReference>(entity);
            const auto target = reference ? blocks.find(lowerCase(reference->block)) : blocks.end();
            if (target != blocks.end()) {
                edges.push_back({handle, target->second, edges.size()});
            }
        }
    }
    if (findBlockCycle(std::move(edges))) {
        throw DrawingError("a block holds itself through a block reference");
    }
}

// What a drawing must have is added where it is missing.
void DwgReader::allowForCompletion()
{
    constexpr std::size_t ofLayout = 6000;
    Document& document = m_builder.document();
    for (const Handle handle : document.table("BLOCK_RECORD").records) {
        const Block& block = *document.find<Block>(handle);
        m_allowance.take((block.begin == 0 ? Allowance::ofObject : 0) + (block.end == 0 ? Allowance::ofObject : 0) +
                         (isSpaceName(block.recordName) && !document.find(block.layout) ? ofLayout : 0));
        for (const Handle entity : block.entities) {
            const auto* image = document.find<Image>(entity);
            m_allowance.take(image && !document.find(image->definitionReactor) ? Allowance::ofObject : 0);
        }
    }
}

void DwgReader::readPreview()
{
    const auto bitmap = dwg::readPreview(m_bytes, m_header.previewAddress);
    if (!bitmap) {
        return;
    }
    constexpr std::size_t chunkBytes = 127;
    Document::RawSection section{"THUMBNAILIMAGE", {{90, std::to_string(bitmap->size())}}};
    for (std::size_t begin = 0; begin < bitmap->size(); begin += chunkBytes) {
        section.groups.push_back({310, hexadecimal(std::string_view(*bitmap).substr(begin, chunkBytes))});
    }
    m_builder.document().rawSections.push_back(std::move(section));
}

} // namespace drawing::dwg
