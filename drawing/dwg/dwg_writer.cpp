#include "drawing/dwg/dwg_writer.h"

#include <algorithm>

#include "drawing/binary_part.h"
#include "drawing/dwg/anonymous_names.h"
#include "drawing/dwg/file_assembly.h"
#include "drawing/dwg/kinds.h"
#include "drawing/dwg/object_record.h"
#include "drawing/error.h"
#include "drawing/left_out.h"
#include "drawing/lower_case.h"

namespace drawing::dwg {

DwgWriter::DwgWriter(const Document& document)
    : m_document(document), m_codePage(windowsCodePageName(document)), m_encoding(m_codePage), m_classes(document),
      m_encoder(m_encoding, codePageNumberOf(m_codePage), m_names)
{}

// An object that has no place in the form is left out, and with it every mention of it, so that those objects are
// written anew that may mention it.
std::string DwgWriter::write()
{
    std::string bytes;
    std::size_t known = 0;
    do {
        known = m_leftOut.size();
        bytes = attempt();
    } while (m_leftOut.size() > known);
    return bytes;
}

Notes DwgWriter::notes() const
{
    LeftOut leftOut;
    for (const auto& [handle, name] : m_leftOut) {
        leftOut.add(name);
    }
    leftOut.addListed(m_document,
                      [&](const Object& object) { return m_leftOut.contains(object.handle) || canWrite(object); });
    Notes notes = leftOut.notes("the binary form");
    if (const std::size_t count = m_madeBlocks.size()) {
        notes.push_back(count == 1
                            ? "A block that is shown is missing; it was written empty."
                            : std::to_string(count) + " blocks that are shown are missing; they were written empty.");
    }
    return notes;
}

std::string DwgWriter::attempt()
{
    m_names = RecordNames(m_document.handleSeed());
    m_encoder.take();
    m_madeRecords.clear();
    m_references.clear();
    reserveViewportList();
    enterNames();
    makeMissingBlocks();
    collectReferences();
    for (const Handle handle : m_document.table("BLOCK_RECORD").records) {
        if (const auto* block = m_document.find<Block>(handle)) {
            writeBlock(*block, m_document.find<BlockBracket>(block->begin), m_document.find<BlockBracket>(block->end));
        }
    }
    for (const MadeBlock& each : m_madeBlocks) {
        writeBlock(each.block, &each.begin, &each.end);
    }
    writeObjects();
    writeTables();
    return assembleFile(
        {m_document, m_encoding, codePageNumberOf(m_codePage), m_names, roots(), m_classes.all(), m_encoder.take()});
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

// A reference to a block that is missing keeps its place, its attributes and the name, so that the block can be given
// to it again. The form has the name nowhere else, so an empty block bears it.
void DwgWriter::makeMissingBlocks()
{
    m_madeBlocks.clear();
    for (const Handle handle : m_document.table("BLOCK_RECORD").records) {
        const auto* holder = m_document.find<Block>(handle);
        for (const Handle entity : holder ? holder->entities : std::vector<Handle>()) {
            const auto* reference = m_document.find<BlockReference>(entity);
            if (!reference || reference->block.empty() || m_names.find("BLOCK_RECORD", reference->block) != 0) {
                continue;
            }
            MadeBlock& made = m_madeBlocks.emplace_back();
            made.block.recordName = reference->block;
            made.block.handle = made.begin.owner = made.end.owner = m_names.reserve();
            made.block.begin = made.begin.handle = m_names.reserve();
            made.block.end = made.end.handle = m_names.reserve();
            m_names.add("BLOCK_RECORD", reference->block, made.block.handle);
            m_madeRecords["BLOCK_RECORD"].push_back(made.block.handle);
        }
    }
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
        return object.binary->type != 0 || m_classes.typeOf(object.name(), object.binary->className) != 0;
    }
    const Kind* kind = kindOfClass(object.name());
    return kind && (kind->type != 0 || m_classes.typeOf(object.name()) != 0);
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

void DwgWriter::writeBlock(const Block& block, const BlockBracket* begin, const BlockBracket* end)
{
    const std::vector<Handle> entities = writable(block.entities);
    const int space = block.handle == m_document.modelSpace().handle   ? modelSpace
                      : block.handle == m_document.paperSpace().handle ? paperSpace
                                                                       : ownerSaid;
    writeBlockHeader(block, entities);
    for (const BlockBracket* bracket : {begin, end}) {
        if (!bracket) {
            throw DrawingError("the block " + block.recordName + " has no beginning or no end");
        }
        Ties ties;
        ties.owner = block.handle;
        ties.space = space;
        writeEntity(*bracket, ties);
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
    m_encoder.add(blockHeaderType, &block, block.handle, f);
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
    const auto listed = m_viewportEntries.find(entity.handle);
    links.viewportEntry = listed == m_viewportEntries.end() ? 0 : listed->second;
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
    for (const Handle handle : m_document.objects()) {
        const Object* object = m_document.find(handle);
        if (!object || !canWrite(*object)) {
            continue;
        }
        const auto* dictionary = dynamic_cast<const Dictionary*>(object);
        if (!dictionary) {
            writeObject(*object, {}, {});
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
        Record record = recordOf(object, bracket ? storedBlockName(m_names.nameOf(bracket->owner)) : std::string());
        ObjectFields f(object.handle, m_encoding, m_names, record);
        f.links = links;
        f.restFollows = object.binary && object.binary->bitCount > 0;
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
            type = object.binary->type != 0 ? object.binary->type
                                            : m_classes.typeOf(object.name(), object.binary->className);
        } else {
            const Kind* kind = kindOfRecord(record);
            if (!kind) {
                throw DrawingError("the kind is unknown");
            }
            kind->fields(f);
            type = kind->type != 0 ? kind->type : m_classes.typeOf(object.name());
        }
        m_encoder.add(type, &object, object.handle, f);
    } catch (const DrawingError&) {
        // Without its header or its brackets a block would be none.
        if (dynamic_cast<const TableRecord*>(&object) || dynamic_cast<const BlockBracket*>(&object) ||
            dynamic_cast<const SequenceEnd*>(&object) || &object == &m_document.rootDictionary()) {
            throw;
        }
        m_leftOut.emplace(object.handle, object.name());
    }
}

} // namespace drawing::dwg
