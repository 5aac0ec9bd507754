#include "standin/arx/document_merge.h"

#include <algorithm>
#include <map>
#include <utility>

#include "drawing/drawing_file.h"
#include "drawing/hatch.h"

namespace standin {

using drawing::Document;
using drawing::Handle;

namespace {

// A drawing's file form holds all of it, so a copy goes through that.
Document copyOf(const Document& source)
{
    return drawing::readDxf(drawing::writeDxf(source));
}

bool refersToObject(const drawing::Group& group)
{
    const int code = group.code;
    return (code >= 320 && code <= 369) || (code >= 390 && code <= 399) || code == 480 || code == 481 || code == 1005;
}

bool refersToObjects(const drawing::Object& object)
{
    return std::any_of(object.kept.begin(), object.kept.end(), [](const drawing::KeptGroups& part) {
        return std::any_of(part.groups.begin(), part.groups.end(), refersToObject);
    });
}

// Cuts what ties the object to the drawing that it comes from.
void release(drawing::Object& object)
{
    object.handle = 0;
    object.owner = 0;
    object.reactors.clear();
    object.extensionDictionary = 0;
    object.applicationGroups.clear();
    for (drawing::KeptGroups& part : object.kept)
        std::erase_if(part.groups, refersToObject);
    std::erase_if(object.extendedData, refersToObject);
}

template <class Type> std::unique_ptr<Type> cast(std::unique_ptr<drawing::Object> object)
{
    auto* type = dynamic_cast<Type*>(object.get());
    if (type)
        static_cast<void>(object.release());
    return std::unique_ptr<Type>(type);
}

// Moves the content of a copied drawing into the target, piece by piece.
class Merge
{
public:
    Merge(Document& target, Document source, const ShowOneFile& showOneFile)
        : m_target(target), m_source(std::move(source)), m_showOneFile(showOneFile)
    {}

    std::map<Handle, Handle> run()
    {
        for (const std::string_view kind : {"APPID", "LTYPE", "LAYER", "STYLE", "DIMSTYLE"})
            moveRecords(kind);
        makeBlocks();
        makeDefinitions();
        for (const auto& [from, to] : m_blocks)
            moveEntities(*m_source.find<drawing::Block>(from), *m_target.find<drawing::Block>(to));
        moveEntities(m_source.modelSpace(), m_target.modelSpace());
        return m_added;
    }

private:
    void moveRecords(std::string_view kind)
    {
        const std::vector<Handle> records = m_source.table(kind).records;
        for (const Handle handle : records) {
            const auto* record = m_source.find<drawing::TableRecord>(handle);
            if (m_target.findRecord(kind, record->recordName))
                continue;
            auto moved = cast<drawing::TableRecord>(m_source.erase(handle).object);
            release(*moved);
            m_target.addRecord(std::move(moved));
        }
    }

    // Blocks that the target has not, empty at first, as their entities may refer to any of them.
    void makeBlocks()
    {
        for (const Handle handle : m_source.table("BLOCK_RECORD").records) {
            const auto* block = m_source.find<drawing::Block>(handle);
            const bool nameless = block->recordName.starts_with('*');
            if (block->layout != 0 || (!nameless && m_target.findBlock(block->recordName)))
                continue;
            const std::string name = nameless ? freeBlockName(block->recordName) : block->recordName;
            drawing::Block& made = m_target.addBlock(name);
            made.flags = block->flags;
            copyBracket(*block, made);
            m_blocks[handle] = made.handle;
            m_blockNames[block->recordName] = name;
        }
    }

    void copyBracket(const drawing::Block& from, const drawing::Block& to)
    {
        const auto* source = m_source.find<drawing::BlockBracket>(from.begin);
        auto* bracket = m_target.find<drawing::BlockBracket>(to.begin);
        if (!source || !bracket)
            return;
        bracket->layer = source->layer;
        bracket->flags = source->flags;
        bracket->basePoint = source->basePoint;
        bracket->externalPath = source->externalPath;
        bracket->description = source->description;
    }

    // "*D7" becomes "*D" with the first number that is free.
    std::string freeBlockName(const std::string& name) const
    {
        const std::string stem = name.substr(0, 2);
        for (int number = 1;; ++number) {
            if (std::string candidate = stem + std::to_string(number); !m_target.findBlock(candidate))
                return candidate;
        }
    }

    void makeDefinitions()
    {
        const drawing::Dictionary* names = m_source.imageDictionary();
        if (!names)
            return;
        const auto entries = names->entries;
        for (const auto& entry : entries) {
            const auto* definition = m_source.find<drawing::ImageDefinition>(entry.object);
            if (!definition)
                continue;
            const std::string name = freeImageName(entry.key, *definition);
            const drawing::Dictionary* present = m_target.imageDictionary();
            if (const Handle there = present ? present->find(name) : 0) {
                m_definitions[entry.object] = there;
                continue;
            }
            auto moved = cast<drawing::ImageDefinition>(m_source.erase(entry.object).object);
            release(*moved);
            m_definitions[entry.object] = m_added[entry.object] =
                m_target.addImageDefinition(name, std::move(moved)).handle;
        }
    }

    // The name itself where it is free or stands for the same file; else with a number behind it.
    std::string freeImageName(const std::string& name, const drawing::ImageDefinition& added) const
    {
        const drawing::Dictionary* present = m_target.imageDictionary();
        std::string candidate = name;
        for (int number = 1; present && present->find(candidate) != 0; ++number) {
            const auto* definition = m_target.find<drawing::ImageDefinition>(present->find(candidate));
            if (definition && definition->path == added.path && m_showOneFile(definition->handle, added.handle))
                break;
            candidate = name + '_' + std::to_string(number);
        }
        return candidate;
    }

    void moveEntities(drawing::Block& from, drawing::Block& to)
    {
        const std::vector<Handle> entities = from.entities;
        for (const Handle handle : entities)
            moveEntity(m_source.erase(handle), to);
    }

    void moveEntity(Document::Erased erased, drawing::Block& to)
    {
        auto entity = cast<drawing::Entity>(std::move(erased.object));
        if (!entity || (dynamic_cast<drawing::RawEntity*>(entity.get()) && refersToObjects(*entity)))
            return;
        release(*entity);
        if (auto* image = dynamic_cast<drawing::Image*>(entity.get())) {
            const Handle definition = std::exchange(image->definition, 0);
            image->definitionReactor = 0;
            m_target.addEntity(to, std::move(entity));
            const auto found = m_definitions.find(definition);
            if (found != m_definitions.end())
                m_target.attachDefinition(*image, *m_target.find<drawing::ImageDefinition>(found->second));
        } else if (auto* polyline = dynamic_cast<drawing::HeavyPolyline*>(entity.get())) {
            polyline->vertices.clear();
            polyline->sequenceEnd = 0;
            m_target.addEntity(to, std::move(entity));
            for (auto& part : erased.parts)
                addPart(*polyline, std::move(part));
        } else if (auto* reference = dynamic_cast<drawing::BlockReference*>(entity.get())) {
            const auto renamed = m_blockNames.find(reference->block);
            if (renamed != m_blockNames.end())
                reference->block = renamed->second;
            reference->attributes.clear();
            reference->sequenceEnd = 0;
            m_target.addEntity(to, std::move(entity));
            for (auto& part : erased.parts)
                addPart(*reference, std::move(part));
        } else {
            releaseTyped(*entity);
            m_target.addEntity(to, std::move(entity));
        }
    }

    // What kinds of entities hold of other objects in fields of their own.
    void releaseTyped(drawing::Entity& entity)
    {
        if (auto* dimension = dynamic_cast<drawing::Dimension*>(&entity)) {
            const auto renamed = m_blockNames.find(dimension->block);
            dimension->block = renamed != m_blockNames.end() ? renamed->second : dimension->block;
        } else if (auto* hatch = dynamic_cast<drawing::Hatch*>(&entity)) {
            hatch->associative = false;
            for (drawing::HatchPath& path : hatch->paths)
                path.sources.clear();
            std::erase_if(hatch->unread, refersToObject);
        } else if (auto* viewport = dynamic_cast<drawing::Viewport*>(&entity)) {
            viewport->frozenLayers.clear();
        }
    }

    // The end of the sequence among the parts falls away: the target makes one of its own.
    void addPart(drawing::HeavyPolyline& polyline, std::unique_ptr<drawing::Object> part)
    {
        release(*part);
        if (auto vertex = cast<drawing::Vertex>(std::move(part)))
            m_target.addVertex(polyline, std::move(vertex));
    }

    void addPart(drawing::BlockReference& reference, std::unique_ptr<drawing::Object> part)
    {
        release(*part);
        if (auto attribute = cast<drawing::Attribute>(std::move(part)))
            m_target.addAttribute(reference, std::move(attribute));
    }

    Document& m_target;
    Document m_source;
    const ShowOneFile& m_showOneFile;
    std::map<Handle, Handle> m_blocks;      // in the source, in the target
    std::map<Handle, Handle> m_definitions; // in the source, in the target
    std::map<Handle, Handle> m_added;       // those of them that the target had not
    std::map<std::string, std::string> m_blockNames;
};

} // namespace

Document extractEntities(const Document& source, const std::set<Handle>& entities, const drawing::Vector3& basePoint)
{
    Document result = copyOf(source);
    for (drawing::Block* space : {&result.modelSpace(), &result.paperSpace()}) {
        const std::vector<Handle> present = space->entities;
        for (const Handle handle : present) {
            if (!entities.count(handle))
                result.erase(handle);
        }
    }
    if (drawing::Dictionary* names = result.imageDictionary()) {
        std::set<Handle> shown;
        for (const Handle record : result.table("BLOCK_RECORD").records) {
            for (const Handle entity : result.find<drawing::Block>(record)->entities) {
                if (const auto* image = result.find<drawing::Image>(entity))
                    shown.insert(image->definition);
            }
        }
        const auto entries = names->entries;
        for (const auto& entry : entries) {
            if (!shown.count(entry.object) && result.find(entry.object)) {
                result.erase(entry.object);
                names->erase(entry.key);
            }
        }
    }
    result.header.setPoint3("$INSBASE", basePoint);
    return result;
}

std::map<Handle, Handle> mergeModelSpace(Document& target, const Document& source, const ShowOneFile& showOneFile)
{
    return Merge(target, copyOf(source), showOneFile).run();
}

} // namespace standin
