#include "drawing/document.h"

#include <algorithm>

#include "drawing/code_pages.h"
#include "drawing/document_builder.h"

namespace drawing {

namespace {

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::size_t insertAt(std::vector<Handle>& list, Handle handle, std::size_t position)
{
    position = std::min(position, list.size());
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(position), handle);
    return position;
}

} // namespace

bool sameName(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

bool isSpaceName(std::string_view blockName)
{
    constexpr std::string_view paperSpace = "*Paper_Space"; // of several, each has a number behind it
    return sameName(blockName, "*Model_Space") || sameName(blockName.substr(0, paperSpace.size()), paperSpace);
}

Document::Document(Bare) {}
Document::Document() : Document(DocumentBuilder().complete())
{
    constexpr int millimetres = 4;
    header.setInteger("$INSUNITS", millimetres);
    header.setInteger("$MEASUREMENT", 1);
}
Document::Document(Document&&) noexcept = default;
Document& Document::operator=(Document&&) noexcept = default;
Document::~Document() = default;

Object* Document::find(Handle handle)
{
    const auto found = m_byHandle.find(handle);
    return found == m_byHandle.end() ? nullptr : found->second.get();
}

const Object* Document::find(Handle handle) const
{
    const auto found = m_byHandle.find(handle);
    return found == m_byHandle.end() ? nullptr : found->second.get();
}

void Document::raiseHandleSeed(Handle atLeast)
{
    if (atLeast == std::numeric_limits<Handle>::max()) {
        throw DrawingError("there is no handle left");
    }
    m_handleSeed = std::max(m_handleSeed, atLeast);
}

Object& Document::store(std::unique_ptr<Object> object)
{
    if (object->handle == 0) {
        object->handle = m_handleSeed;
    }
    raiseHandleSeed(std::max(object->handle, object->handle + 1));
    Object& stored = *object;
    if (!m_byHandle.try_emplace(stored.handle, std::move(object)).second) {
        throw DrawingError("two objects have the same handle");
    }
    return stored;
}

void Document::insertObject(std::unique_ptr<Object> object, Handle owner)
{
    object->owner = owner;
    m_objects.push_back(store(std::move(object)).handle);
}

void Document::insertEntity(Block& block, std::unique_ptr<Entity> entity, std::size_t position)
{
    entity->owner = block.handle;
    insertAt(block.entities, store(std::move(entity)).handle, position);
}

void Document::insertRecord(std::unique_ptr<TableRecord> record)
{
    Table& owner = table(record->name());
    if (findRecord(owner.kind, record->recordName)) {
        throw DrawingError("there is a " + owner.kind + " named \"" + record->recordName + "\" already");
    }
    record->owner = owner.handle;
    owner.records.push_back(store(std::move(record)).handle);
}

namespace {

// The end of a sequence looks like what it ends.
std::unique_ptr<SequenceEnd> makeSequenceEnd(const Entity& of)
{
    auto end = std::make_unique<SequenceEnd>();
    end->owner = of.handle;
    end->layer = of.layer;
    return end;
}

} // namespace

Vertex& Document::addVertex(HeavyPolyline& polyline, std::unique_ptr<Vertex> vertex)
{
    Vertex& added = *vertex;
    added.owner = polyline.handle;
    polyline.vertices.push_back(store(std::move(vertex)).handle);
    if (polyline.sequenceEnd == 0) {
        polyline.sequenceEnd = store(makeSequenceEnd(polyline)).handle;
    }
    return added;
}

Attribute& Document::addAttribute(BlockReference& reference, std::unique_ptr<Attribute> attribute)
{
    Attribute& added = *attribute;
    added.owner = reference.handle;
    reference.attributes.push_back(store(std::move(attribute)).handle);
    if (reference.sequenceEnd == 0) {
        reference.sequenceEnd = store(makeSequenceEnd(reference)).handle;
    }
    return added;
}

Block& Document::addBlock(std::string_view name)
{
    auto made = std::make_unique<Block>();
    made->recordName = name;
    Block& block = addRecord(std::move(made));
    for (const bool begin : {true, false}) {
        auto bracket = std::make_unique<BlockBracket>(begin);
        bracket->owner = block.handle;
        (begin ? block.begin : block.end) = store(std::move(bracket)).handle;
    }
    return block;
}

Block& Document::modelSpace()
{
    return *find<Block>(m_modelSpace);
}

const Block& Document::modelSpace() const
{
    return *find<Block>(m_modelSpace);
}

Block& Document::paperSpace()
{
    return *find<Block>(m_paperSpace);
}

const Block& Document::paperSpace() const
{
    return *find<Block>(m_paperSpace);
}

const Table& Document::table(std::string_view kind) const
{
    for (const Handle handle : m_tables) {
        const auto* found = find<Table>(handle);
        if (found && found->kind == kind) {
            return *found;
        }
    }
    throw DrawingError("a drawing has no table of the kind " + std::string(kind));
}

Table& Document::table(std::string_view kind)
{
    return const_cast<Table&>(std::as_const(*this).table(kind));
}

const TableRecord* Document::findRecord(std::string_view kind, std::string_view name) const
{
    for (const Handle handle : table(kind).records) {
        const auto* record = find<TableRecord>(handle);
        if (record && sameName(record->recordName, name)) {
            return record;
        }
    }
    return nullptr;
}

TableRecord* Document::findRecord(std::string_view kind, std::string_view name)
{
    return const_cast<TableRecord*>(std::as_const(*this).findRecord(kind, name));
}

Layer* Document::findLayer(std::string_view name)
{
    return dynamic_cast<Layer*>(findRecord("LAYER", name));
}

const Layer* Document::findLayer(std::string_view name) const
{
    return dynamic_cast<const Layer*>(findRecord("LAYER", name));
}

const Linetype* Document::findLinetype(std::string_view name) const
{
    return dynamic_cast<const Linetype*>(findRecord("LTYPE", name));
}

const TextStyle* Document::findTextStyle(std::string_view name) const
{
    return dynamic_cast<const TextStyle*>(findRecord("STYLE", name));
}

Block* Document::findBlock(std::string_view name)
{
    return dynamic_cast<Block*>(findRecord("BLOCK_RECORD", name));
}

const Block* Document::findBlock(std::string_view name) const
{
    return dynamic_cast<const Block*>(findRecord("BLOCK_RECORD", name));
}

ViewportRecord& Document::activeViewport()
{
    return dynamic_cast<ViewportRecord&>(*findRecord("VPORT", "*Active"));
}

Dictionary& Document::rootDictionary()
{
    return *find<Dictionary>(m_objects.front());
}

const Dictionary& Document::rootDictionary() const
{
    return *find<Dictionary>(m_objects.front());
}

std::string windowsCodePageName(const Document& document)
{
    constexpr int fallbackPage = 1252;
    const auto own = codePageNumber(document.header.text("$DWGCODEPAGE"));
    const int number = windowsCodePage(own.value_or(fallbackPage));
    return "ANSI_" + std::to_string(openCodePage(number) ? number : fallbackPage);
}

} // namespace drawing
