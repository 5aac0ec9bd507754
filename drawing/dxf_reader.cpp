#include "drawing/dxf_reader.h"

#include <algorithm>
#include <utility>

#include "drawing/block_cycles.h"
#include "drawing/legacy_markers.h"
#include "drawing/numbers.h"
#include "drawing/object_factory.h"

namespace drawing {

namespace {

constexpr std::string_view kOldestRelease = "AC1009"; // release 12
constexpr std::string_view kFirstUtf8Release = "AC1021";
constexpr std::string_view kNewestRelease = "AC1032"; // release 2018

TextEncoding encodingOf(const FileSurvey& survey)
{
    if (survey.byteOrderMark || survey.release >= kFirstUtf8Release) {
        return TextEncoding();
    }
    return TextEncoding(survey.codePage.empty() ? "ANSI_1252" : survey.codePage);
}

std::string lowerCase(std::string_view text)
{
    std::string result(text);
    for (char& c : result) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return result;
}

// The release 12 has other names for the blocks of the two spaces.
std::string presentBlockName(const std::string& name)
{
    if (sameName(name, "$MODEL_SPACE")) {
        return "*Model_Space";
    }
    return sameName(name, "$PAPER_SPACE") ? "*Paper_Space" : name;
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
    const bool wellFormed = release.size() == kOldestRelease.size() && release.starts_with("AC1");
    if (!release.empty() && (!wellFormed || release < kOldestRelease || release > kNewestRelease)) {
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
    if (!group) {
        throw DrawingError(m_groups.line(), "the file ends too early");
    }
    m_current = *group;
}

bool DxfReader::atRecord(std::string_view name) const
{
    return m_current.code == 0 && trimmed(m_current.value) == name;
}

void DxfReader::fail(const std::string& reason) const
{
    throw DrawingError(m_current.line, reason);
}

std::string DxfReader::decoded(const FileGroup& group) const
{
    auto text = m_encoding.decode(group.value);
    if (!text) {
        throw DrawingError(group.line, "text in the code page \"" + m_survey.codePage + "\" can't be read");
    }
    return std::move(*text);
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
    constexpr std::size_t kMostVariables = 10'000;
    HeaderVariables& header = m_builder.document().header;
    while (!atRecord("ENDSEC")) {
        if (m_current.code != 9) {
            fail("a header variable was expected");
        }
        const std::string name(trimmed(m_current.value));
        const std::size_t line = m_current.line;
        Groups groups;
        advance();
        while (m_current.code != 9 && m_current.code != 0) {
            groups.push_back({m_current.code, decoded(m_current)});
            advance();
        }
        if (name == "$HANDSEED" && !groups.empty()) {
            raiseSeed(groups[0].value, line);
        }
        header.setGroups(name, std::move(groups));
        if (header.all().size() > kMostVariables) {
            throw DrawingError(line, "there are more header variables than any drawing has");
        }
    }
}

void DxfReader::raiseSeed(const std::string& value, std::size_t line)
{
    const auto seed = parseHandle(value);
    if (!seed) {
        throw DrawingError(line, "the seed of the handles is none");
    }
    try {
        m_builder.document().raiseHandleSeed(*seed);
    } catch (const DrawingError& error) {
        throw DrawingError(line, error.what());
    }
}

void DxfReader::readClasses()
{
    while (!atRecord("ENDSEC") && !atRecord("EOF")) {
        const Record record = readRecord();
        if (record.name != "CLASS") {
            throw DrawingError(record.line, "a class was expected, not " + record.name);
        }
        m_builder.document().classes.emplace_back(record.groups.begin(), record.groups.end());
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
        const std::size_t line = head.line;
        try {
            table = &m_builder.addTable(std::move(made));
        } catch (const DrawingError& error) {
            throw DrawingError(line, error.what());
        }
    }
    while (!atRecord("ENDTAB")) {
        Record record = readRecord();
        if (record.name != name) {
            throw DrawingError(record.line, "the table " + name + " holds a record " + record.name);
        }
        auto made = makeTableRecord(name);
        FieldReader(record).read(*made);
        made->owner = table->handle;
        auto& stored = static_cast<TableRecord&>(storeAt(record.line, std::move(made)));
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
    block.begin = storeAt(head.line, std::move(begin)).handle;
    while (!atRecord("ENDBLK")) {
        readEntity(&block);
    }
    Record tail = readRecord();
    auto end = std::make_unique<BlockBracket>(false);
    FieldReader(tail).read(*end);
    end->owner = block.handle;
    block.end = storeAt(tail.line, std::move(end)).handle;
}

void DxfReader::readEntities()
{
    while (!atRecord("ENDSEC") && !atRecord("EOF")) {
        readEntity(nullptr);
    }
}

// The block of an entity of the entity section: the one that it names as its owner, or else one of the spaces.
Block& DxfReader::blockOf(const Entity& entity, bool paperSpace)
{
    if (auto* owner = m_builder.document().find<Block>(entity.owner)) {
        return *owner;
    }
    return obtainBlock(paperSpace ? "*Paper_Space" : "*Model_Space");
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
    Entity& entity = static_cast<Entity&>(storeAt(record.line, std::move(made)));
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
        polyline.vertices.push_back(storeAt(record.line, std::move(vertex)).handle);
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
        reference.attributes.push_back(storeAt(record.line, std::move(attribute)).handle);
    }
    if (announced || !reference.attributes.empty() || atRecord("SEQEND")) {
        reference.sequenceEnd = readSequenceEnd(reference);
    }
}

Handle DxfReader::readSequenceEnd(const Entity& owner)
{
    if (!atRecord("SEQEND")) {
        fail("the vertices or attributes of a " + std::string(owner.name()) + " do not end with SEQEND");
    }
    Record record = readRecord();
    auto end = std::make_unique<SequenceEnd>();
    FieldReader(record).read(*end);
    end->owner = owner.handle;
    return storeAt(record.line, std::move(end)).handle;
}

void DxfReader::readObjects()
{
    while (!atRecord("ENDSEC") && !atRecord("EOF")) {
        Record record = readRecord();
        auto made = makeObject(record.name);
        FieldReader(record).read(*made);
        m_builder.list(storeAt(record.line, std::move(made)).handle);
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

Object& DxfReader::storeAt(std::size_t line, std::unique_ptr<Object> object)
{
    const Handle handle = object->handle;
    try {
        return m_builder.store(std::move(object));
    } catch (const DrawingError& error) {
        throw DrawingError(line, std::string(error.what()) + " (" + formatHandle(handle) + ")");
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
