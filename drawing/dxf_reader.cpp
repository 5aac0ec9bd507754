#include "drawing/dxf_reader.h"

#include <algorithm>
#include <utility>

#include "drawing/block_cycles.h"
#include "drawing/legacy_markers.h"
#include "drawing/lower_case.h"
#include "drawing/numbers.h"
#include "drawing/object_factory.h"

namespace drawing {

namespace {

constexpr std::string_view oldestRelease = "AC1009"; // release 12
constexpr std::string_view firstUtf8Release = "AC1021";
constexpr std::string_view newestRelease = "AC1032"; // release 2018
constexpr std::string_view modelSpaceName = "*Model_Space";
constexpr std::string_view paperSpaceName = "*Paper_Space"; // further ones have a number behind

TextEncoding encodingOf(const FileSurvey& survey)
{
    if (survey.byteOrderMark || survey.release >= firstUtf8Release) {
        return TextEncoding();
    }
    return TextEncoding(survey.codePage);
}

// The release 12 has other names for the blocks of the two spaces.
std::string presentBlockName(const std::string& name)
{
    if (sameName(name, "$MODEL_SPACE")) {
        return std::string(modelSpaceName);
    }
    return sameName(name, "$PAPER_SPACE") ? std::string(paperSpaceName) : name;
}

std::string valueOf(const Record& record, int code)
{
    for (const PlacedGroup& group : record.groups) {
        if (group.code == code) {
            return group.value;
        }
    }
    return {};
}

} // namespace

DxfReader::DxfReader(std::string_view bytes)
    : m_survey(surveyFile(bytes)), m_groups(bytes), m_encoding(encodingOf(m_survey))
{
    m_builder.document().raiseHandleSeed(m_survey.highestHandle + 1);
}

Document DxfReader::read()
{
    const std::string& release = m_survey.release;
    const bool wellFormed = release.size() == oldestRelease.size() && release.starts_with("AC1");
    if (!release.empty() && (!wellFormed || release < oldestRelease || release > newestRelease)) {
        throw DrawingError("the drawing is of the release \"" + release +
                           "\"; 12 (AC1009) to 2018 (AC1032) can be read");
    }
    advance();
    while (!atRecord("EOF")) {
        if (!atRecord("SECTION")) {
            fail("a section or the end of the file was expected");
        }
        readSection();
    }
    m_builder.completeTables();
    checkCycles();
    return m_builder.complete();
}

void DxfReader::advance()
{
    const auto group = m_groups.next();
    if (group) {
        m_current = *group;
        return;
    }
    if (!mayEndHere()) {
        throw DrawingError(m_groups.line(), "the file ends too early");
    }
    m_mendings.add(Mending::EndOfFile);
    m_current = {0, "EOF", m_groups.line()};
}

// The mark at the end may be missing where a section has ended and none is to come that a drawing consists of. Objects
// came with the release 13.
bool DxfReader::mayEndHere() const
{
    return atRecord("ENDSEC") && m_sections.contains("ENTITIES") &&
           (m_survey.release <= oldestRelease || m_sections.contains("OBJECTS"));
}

bool DxfReader::atRecord(std::string_view name) const
{
    return m_current.code == 0 && trimmed(m_current.value) == name;
}

void DxfReader::fail(const std::string& reason) const
{
    throw DrawingError(m_current.line, reason);
}

std::string DxfReader::decoded(const FileGroup& group)
{
    if (!m_encoding.known() && !isAscii(group.value)) {
        m_mendings.add(Mending::CodePage);
    }
    return m_encoding.decode(group.value);
}

// Reads the record that begins here, up to the next.
Record DxfReader::readRecord()
{
    if (m_current.code != 0) {
        fail("a record was expected, not a group " + std::to_string(m_current.code));
    }
    Record record{std::string(trimmed(m_current.value)), m_current.line, {}};
    advance();
    while (m_current.code != 0) {
        PlacedGroup& group = record.groups.emplace_back();
        group.code = m_current.code;
        group.value = decoded(m_current);
        group.line = m_current.line;
        advance();
    }
    return record;
}

void DxfReader::readSection()
{
    advance();
    if (m_current.code != 2) {
        fail("the section has no name");
    }
    const std::string name(trimmed(m_current.value));
    m_sections.insert(name);
    advance();
    if (name == "HEADER") {
        readHeader();
    } else if (name == "CLASSES") {
        readClasses();
    } else if (name == "TABLES") {
        readTables();
    } else if (name == "BLOCKS") {
        readBlocks();
    } else if (name == "ENTITIES") {
        readEntities();
    } else if (name == "OBJECTS") {
        readObjects();
    } else {
        readRawSection(name);
    }
    if (atRecord("EOF")) {
        fail("the section " + name + " does not end");
    }
    advance();
}

void DxfReader::readHeader()
{
    constexpr std::size_t mostVariables = 10'000;
    HeaderVariables& header = m_builder.document().header;
    while (!atRecord("ENDSEC")) {
        if (m_current.code != 9) {
            fail("a header variable was expected");
        }
        std::string name(trimmed(m_current.value));
        const std::size_t line = m_current.line;
        Groups groups;
        advance();
        while (m_current.code != 9 && m_current.code != 0) {
            groups.push_back({m_current.code, decoded(m_current)});
            advance();
        }
        if (name == "$HANDSEED" && !groups.empty()) {
            raiseSeed(groups[0].value);
        }
        header.append({std::move(name), std::move(groups)});
        if (header.all().size() > mostVariables) {
            throw DrawingError(line, "there are more header variables than any drawing has");
        }
    }
}

void DxfReader::raiseSeed(const std::string& value)
{
    const auto seed = parseHandle(value);
    if (seed && *seed <= highestHandleTaken) {
        m_builder.document().raiseHandleSeed(*seed);
    } else {
        m_mendings.add(Mending::HandleSeed);
    }
}

void DxfReader::readClasses()
{
    while (!atRecord("ENDSEC") && !atRecord("EOF")) {
        const Record record = readRecord();
        if (record.name != "CLASS") {
            throw DrawingError(record.line, "a class was expected, not " + record.name);
        }
        Groups& groups = m_builder.document().classes.emplace_back();
        for (const PlacedGroup& group : record.groups) {
            groups.push_back(group.plain());
        }
    }
}

void DxfReader::readTables()
{
    while (!atRecord("ENDSEC") && !atRecord("EOF")) {
        if (!atRecord("TABLE")) {
            fail("a table was expected");
        }
        readTable();
    }
}

void DxfReader::readTable()
{
    Record head = readRecord();
    const auto kind =
        std::find_if(head.groups.begin(), head.groups.end(), [](const PlacedGroup& g) { return g.code == 2; });
    if (kind == head.groups.end()) {
        throw DrawingError(head.line, "the table has no name");
    }
    const std::string name(trimmed(kind->value));
    head.groups.erase(kind);
    Table* table = m_builder.findTable(name);
    if (!table) {
        auto made = std::make_unique<Table>(name);
        FieldReader(head).read(*made);
        mendHandle(*made);
        table = &m_builder.addTable(std::move(made));
    }
    while (!atRecord("ENDTAB")) {
        Record record = readRecord();
        if (record.name != name) {
            throw DrawingError(record.line, "the table " + name + " holds a record " + record.name);
        }
        auto made = makeTableRecord(name);
        FieldReader(record).read(*made);
        made->owner = table->handle;
        auto& stored = static_cast<TableRecord&>(store(std::move(made)));
        table->records.push_back(stored.handle);
        if (name == "BLOCK_RECORD") {
            m_blocks.try_emplace(lowerCase(stored.recordName), stored.handle);
        }
    }
    advance();
}

Block& DxfReader::obtainBlock(const std::string& name)
{
    m_builder.completeTables();
    const auto found = m_blocks.find(lowerCase(name));
    if (found != m_blocks.end()) {
        return *m_builder.document().find<Block>(found->second);
    }
    Block& made = m_builder.addBlock(name);
    m_blocks.emplace(lowerCase(name), made.handle);
    return made;
}

void DxfReader::readBlocks()
{
    while (!atRecord("ENDSEC") && !atRecord("EOF")) {
        if (!atRecord("BLOCK")) {
            fail("a block was expected");
        }
        readBlock();
    }
}

void DxfReader::readBlock()
{
    Record head = readRecord();
    Block& block = obtainBlock(presentBlockName(valueOf(head, 2)));
    if (block.begin != 0) {
        throw DrawingError(head.line, "the block " + block.recordName + " is there twice");
    }
    auto begin = std::make_unique<BlockBracket>(true);
    FieldReader(head).read(*begin);
    begin->owner = block.handle;
    block.begin = store(std::move(begin)).handle;
    while (!atRecord("ENDBLK")) {
        readEntity(&block);
    }
    Record tail = readRecord();
    auto end = std::make_unique<BlockBracket>(false);
    FieldReader(tail).read(*end);
    end->owner = block.handle;
    block.end = store(std::move(end)).handle;
}

void DxfReader::readEntities()
{
    while (!atRecord("ENDSEC") && !atRecord("EOF")) {
        readEntity(nullptr);
    }
}

// The space of an entity of the entity section: the layout's block that it names as its owner. Where it names another
// block, as some programs do that have other names for the spaces, or none, group 67 decides.
Block& DxfReader::blockOf(const Entity& entity, bool paperSpace)
{
    auto* owner = m_builder.document().find<Block>(entity.owner);
    if (owner && isSpaceName(owner->recordName)) {
        return *owner;
    }
    if (owner) {
        m_mendings.add(Mending::ForeignBlock);
    }
    return obtainBlock(std::string(paperSpace ? paperSpaceName : modelSpaceName));
}

Entity& DxfReader::readEntity(Block* block)
{
    if (atRecord("VERTEX") || atRecord("ATTRIB") || atRecord("SEQEND") || atRecord("ENDSEC") || atRecord("EOF")) {
        fail(std::string(trimmed(m_current.value)) + " is out of place here");
    }
    Record record = readRecord();
    auto made = makeEntity(record.name);
    addLegacyMarkers(record);
    FieldReader reader(record);
    reader.read(*made);
    Block& owner = block ? *block : blockOf(*made, reader.context.paperSpace);
    made->owner = owner.handle;
    Entity& entity = static_cast<Entity&>(store(std::move(made)));
    owner.entities.push_back(entity.handle);
    if (auto* polyline = dynamic_cast<HeavyPolyline*>(&entity)) {
        readVertices(*polyline);
    } else if (auto* reference = dynamic_cast<BlockReference*>(&entity)) {
        readAttributes(*reference, reader.context.attributesFollow != 0);
        m_references.push_back({owner.handle, reference, record.line});
    }
    return entity;
}

void DxfReader::readVertices(HeavyPolyline& polyline)
{
    while (atRecord("VERTEX")) {
        Record record = readRecord();
        auto vertex = std::make_unique<Vertex>();
        FieldReader(record).read(*vertex);
        vertex->owner = polyline.handle;
        polyline.vertices.push_back(store(std::move(vertex)).handle);
    }
    polyline.sequenceEnd = readSequenceEnd(polyline);
}

void DxfReader::readAttributes(BlockReference& reference, bool announced)
{
    while (atRecord("ATTRIB")) {
        Record record = readRecord();
        auto attribute = std::make_unique<Attribute>();
        FieldReader(record).read(*attribute);
        attribute->owner = reference.handle;
        reference.attributes.push_back(store(std::move(attribute)).handle);
    }
    if (!reference.attributes.empty() || atRecord("SEQEND")) {
        reference.sequenceEnd = readSequenceEnd(reference);
    } else if (announced) {
        m_mendings.add(Mending::AnnouncedAttribute);
    }
}

Handle DxfReader::readSequenceEnd(const Entity& owner)
{
    auto end = std::make_unique<SequenceEnd>();
    if (atRecord("SEQEND")) {
        Record record = readRecord();
        FieldReader(record).read(*end);
    } else {
        m_mendings.add(Mending::SequenceEnd);
        end->layer = owner.layer;
    }
    end->owner = owner.handle;
    return store(std::move(end)).handle;
}

void DxfReader::readObjects()
{
    while (!atRecord("ENDSEC") && !atRecord("EOF")) {
        Record record = readRecord();
        auto made = makeObject(record.name);
        FieldReader(record).read(*made);
        m_builder.list(store(std::move(made)).handle);
    }
}

void DxfReader::readRawSection(const std::string& name)
{
    Document::RawSection section{name, {}};
    while (!atRecord("ENDSEC") && !atRecord("EOF")) {
        section.groups.push_back({m_current.code, decoded(m_current)});
        advance();
    }
    m_builder.document().rawSections.push_back(std::move(section));
}

Object& DxfReader::store(std::unique_ptr<Object> object)
{
    mendHandle(*object);
    return m_builder.store(std::move(object));
}

// An object that can't keep its handle is given a new one; what refers to that handle means the object that has it.
void DxfReader::mendHandle(Object& object)
{
    if (object.handle > highestHandleTaken) {
        m_mendings.add(Mending::UselessHandle);
        object.handle = 0;
    } else if (m_builder.document().find(object.handle)) {
        m_mendings.add(Mending::RepeatedHandle);
        object.handle = 0;
    }
}

void DxfReader::checkCycles() const
{
    std::vector<BlockEdge> edges;
    for (const Reference& each : m_references) {
        const auto target = m_blocks.find(lowerCase(each.reference->block));
        if (target != m_blocks.end()) {
            edges.push_back({each.inBlock, target->second, each.line});
        }
    }
    if (const auto closing = findBlockCycle(std::move(edges))) {
        throw DrawingError(closing->tag, "a block holds itself through this block reference");
    }
}

} // namespace drawing
