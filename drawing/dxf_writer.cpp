#include "drawing/dxf_writer.h"

#include <algorithm>
#include <set>
#include <string>

#include "drawing/binary_part.h"
#include "drawing/known_classes.h"
#include "drawing/left_out.h"
#include "drawing/numbers.h"

namespace drawing {

namespace {

constexpr std::string_view releaseWritten = "AC1015";
constexpr std::string_view maintenanceRelease = "6";

} // namespace

DxfWriter::DxfWriter(const Document& document, DxfForm form)
    : m_document(document), m_codePage(windowsCodePageName(document)), m_sink(TextEncoding(m_codePage), form)
{}

std::string DxfWriter::write()
{
    writeHeader();
    writeClasses();
    writeTables();
    writeBlocks();
    writeEntities();
    writeObjects();
    for (const Document::RawSection& section : m_document.rawSections) {
        beginSection(section.name);
        m_sink.groups(section.groups);
        endSection();
    }
    m_sink.group(0, "EOF");
    return m_sink.take();
}

Notes DxfWriter::notes() const
{
    LeftOut leftOut;
    leftOut.addListed(m_document, [](const Object& object) { return !isOnlyBinary(object); });
    return leftOut.notes("a DXF file");
}

void DxfWriter::beginSection(std::string_view name)
{
    m_sink.group(0, "SECTION");
    m_sink.group(2, name);
}

void DxfWriter::endSection()
{
    m_sink.group(0, "ENDSEC");
}

void DxfWriter::writeHeader()
{
    beginSection("HEADER");
    const HeaderVariables::Variable ours[] = {
        {"$ACADVER", {{1, std::string(releaseWritten)}}},
        {"$ACADMAINTVER", {{70, std::string(maintenanceRelease)}}},
        {"$DWGCODEPAGE", {{3, m_codePage}}},
        {"$HANDSEED", {{5, formatHandle(m_document.handleSeed())}}},
    };
    const auto put = [&](const HeaderVariables::Variable& variable) {
        m_sink.group(9, variable.name);
        m_sink.groups(variable.groups);
    };
    for (const auto& variable : ours) {
        put(variable);
    }
    for (const auto& variable : m_document.header.all()) {
        const bool replaced =
            std::any_of(std::begin(ours), std::end(ours), [&](const auto& own) { return own.name == variable.name; });
        if (!replaced) {
            put(variable);
        }
    }
    endSection();
}

void DxfWriter::writeClasses()
{
    beginSection("CLASSES");
    std::set<std::string> present;
    for (const Groups& groups : m_document.classes) {
        m_sink.group(0, "CLASS");
        for (const Group& group : groups) {
            if (group.code == 1) {
                present.insert(group.value);
            }
            // The count of instances came with the release 2004.
            if (group.code != 91) {
                m_sink.group(group.code, group.value);
            }
        }
    }
    for (const KnownClass& known : knownClasses()) {
        if (!present.contains(std::string(known.name))) {
            m_sink.group(0, "CLASS");
            m_sink.groups({{1, std::string(known.name)},
                           {2, std::string(known.className)},
                           {3, std::string(known.application)},
                           {90, std::to_string(known.flags)},
                           {280, "0"},
                           {281, known.entity ? "1" : "0"}});
        }
    }
    endSection();
}

void DxfWriter::writeTables()
{
    beginSection("TABLES");
    for (const Handle handle : m_document.tables()) {
        const auto& table = *m_document.find<Table>(handle);
        FieldWriter(m_sink).write(table, {{2, table.kind}});
        for (const Handle record : table.records) {
            if (const Object* found = m_document.find(record)) {
                FieldWriter(m_sink).write(*found);
            }
        }
        m_sink.group(0, "ENDTAB");
    }
    endSection();
}

void DxfWriter::writeBracket(const Block& block, Handle bracket)
{
    const auto* found = m_document.find<BlockBracket>(bracket);
    if (!found) {
        throw DrawingError("the block " + block.recordName + " has no beginning or no end");
    }
    FieldWriter writer(m_sink);
    writer.context.blockName = block.recordName;
    writer.context.paperSpace = block.handle == m_document.paperSpace().handle;
    writer.write(*found);
}

// The entities of the two spaces have a section of their own; their blocks stand empty here.
void DxfWriter::writeBlocks()
{
    beginSection("BLOCKS");
    for (const Handle handle : m_document.table("BLOCK_RECORD").records) {
        const auto* block = m_document.find<Block>(handle);
        if (!block) {
            continue;
        }
        writeBracket(*block, block->begin);
        if (block != &m_document.modelSpace() && block != &m_document.paperSpace()) {
            writeEntitiesOf(*block, false);
        }
        writeBracket(*block, block->end);
    }
    endSection();
}

void DxfWriter::writeEntities()
{
    beginSection("ENTITIES");
    writeEntitiesOf(m_document.modelSpace(), false);
    writeEntitiesOf(m_document.paperSpace(), true);
    endSection();
}

void DxfWriter::writeEntitiesOf(const Block& block, bool paperSpace)
{
    for (const Handle handle : block.entities) {
        if (const auto* entity = m_document.find<Entity>(handle); entity && !isOnlyBinary(*entity)) {
            writeEntity(*entity, paperSpace);
        }
    }
}

void DxfWriter::writeEntity(const Entity& entity, bool paperSpace)
{
    FieldWriter writer(m_sink);
    writer.context.paperSpace = paperSpace;
    const auto writePart = [&](Handle part) {
        if (const auto* found = m_document.find<Entity>(part)) {
            FieldWriter partWriter(m_sink);
            partWriter.context.paperSpace = paperSpace;
            partWriter.write(*found);
        }
    };
    if (const auto* polyline = dynamic_cast<const HeavyPolyline*>(&entity)) {
        writer.write(entity);
        for (const Handle vertex : polyline->vertices) {
            writePart(vertex);
        }
        writePart(polyline->sequenceEnd);
    } else if (const auto* reference = dynamic_cast<const BlockReference*>(&entity)) {
        writer.context.attributesFollow = reference->sequenceEnd != 0 ? 1 : 0;
        writer.write(entity);
        for (const Handle attribute : reference->attributes) {
            writePart(attribute);
        }
        writePart(reference->sequenceEnd);
    } else {
        writer.write(entity);
    }
}

// What only the binary form can hold has no place here, and no name either.
Dictionary DxfWriter::withoutBinary(const Dictionary& dictionary) const
{
    Dictionary copy = dictionary;
    std::erase_if(copy.entries, [&](const Dictionary::Entry& entry) {
        const Object* held = m_document.find(entry.object);
        return held && isOnlyBinary(*held);
    });
    return copy;
}

void DxfWriter::writeObjects()
{
    beginSection("OBJECTS");
    for (const Handle handle : m_document.objects()) {
        const Object* object = m_document.find(handle);
        if (const auto* dictionary = dynamic_cast<const Dictionary*>(object)) {
            FieldWriter(m_sink).write(withoutBinary(*dictionary));
        } else if (object && !isOnlyBinary(*object)) {
            FieldWriter(m_sink).write(*object);
        }
    }
    endSection();
}

} // namespace drawing
