// Taking objects out of a drawing, and putting them back.

#include <algorithm>
#include <unordered_set>

#include "drawing/document.h"

namespace drawing {

// The list in which the object stands; null for parts of other objects.
std::vector<Handle>* Document::listOf(const Object& object)
{
    if (dynamic_cast<const Entity*>(&object)) {
        if (auto* block = find<Block>(object.owner)) {
            return dynamic_cast<const BlockBracket*>(&object) ? nullptr : &block->entities;
        }
        if (auto* polyline = find<HeavyPolyline>(object.owner)) {
            return dynamic_cast<const Vertex*>(&object) ? &polyline->vertices : nullptr;
        }
        if (auto* reference = find<BlockReference>(object.owner)) {
            return dynamic_cast<const Attribute*>(&object) ? &reference->attributes : nullptr;
        }
        return nullptr;
    }
    if (dynamic_cast<const TableRecord*>(&object)) {
        auto* owner = find<Table>(object.owner);
        return owner ? &owner->records : nullptr;
    }
    return &m_objects;
}

// The handles of all that goes with the object.
std::vector<Handle> Document::partsOf(const Object& object) const
{
    std::vector<Handle> parts;
    if (const auto* polyline = dynamic_cast<const HeavyPolyline*>(&object)) {
        parts = polyline->vertices;
        parts.push_back(polyline->sequenceEnd);
    } else if (const auto* reference = dynamic_cast<const BlockReference*>(&object)) {
        parts = reference->attributes;
        parts.push_back(reference->sequenceEnd);
    } else if (const auto* image = dynamic_cast<const Image*>(&object)) {
        parts.push_back(image->definitionReactor);
    } else if (const auto* block = dynamic_cast<const Block*>(&object)) {
        for (const Handle entity : block->entities) {
            parts.push_back(entity);
            if (const Object* found = find(entity)) {
                const std::vector<Handle> inner = partsOf(*found);
                parts.insert(parts.end(), inner.begin(), inner.end());
            }
        }
        parts.push_back(block->begin);
        parts.push_back(block->end);
    }
    std::erase_if(parts, [&](Handle part) { return find(part) == nullptr; });
    return parts;
}

// The objects in the extension dictionaries of these, which nothing else holds.
std::vector<Handle> Document::extensionsOf(const std::vector<Handle>& holders) const
{
    std::vector<Handle> extensions;
    for (const Handle holder : holders) {
        const Handle extension = find(holder)->extensionDictionary;
        const auto* dictionary = find<Dictionary>(extension);
        if (dictionary && extension != m_objects.front() &&
            (dictionary->owner == holder || find(dictionary->owner) == nullptr)) {
            extensions.push_back(extension);
        }
    }
    if (extensions.empty()) {
        return extensions;
    }
    std::unordered_multimap<Handle, Handle> owned;
    for (const Handle object : m_objects) {
        owned.emplace(find(object)->owner, object);
    }
    std::unordered_set<Handle> known(extensions.begin(), extensions.end());
    for (std::size_t i = 0; i < extensions.size(); ++i) {
        const auto [first, last] = owned.equal_range(extensions[i]);
        for (auto each = first; each != last; ++each) {
            if (known.insert(each->second).second) {
                extensions.push_back(each->second);
            }
        }
    }
    return extensions;
}

// An image's reactor stands among the reactors of the definition.
void Document::tieReactor(const Object& object, bool tie)
{
    const auto* reactor = dynamic_cast<const ImageDefinitionReactor*>(&object);
    const auto* image = reactor ? find<Image>(reactor->image) : nullptr;
    if (auto* definition = image ? find<ImageDefinition>(image->definition) : nullptr) {
        std::erase(definition->reactors, reactor->handle);
        if (tie) {
            definition->reactors.push_back(reactor->handle);
        }
    }
}

// Takes those of the handles that stand in the list of objects out of it.
std::vector<Document::Place> Document::unlist(const std::vector<Handle>& handles)
{
    const std::unordered_set<Handle> gone(handles.begin(), handles.end());
    std::vector<Place> places;
    for (std::size_t i = 0; i < m_objects.size(); ++i) {
        if (gone.contains(m_objects[i])) {
            places.push_back({m_objects[i], i});
        }
    }
    std::erase_if(m_objects, [&](Handle handle) { return gone.contains(handle); });
    return places;
}

// Puts them back; what has come in the meantime stands behind.
void Document::relist(const std::vector<Place>& places)
{
    std::vector<Handle> merged;
    auto next = m_objects.begin();
    for (const Place& place : places) {
        while (merged.size() < place.position && next != m_objects.end()) {
            merged.push_back(*next++);
        }
        merged.push_back(place.object);
    }
    merged.insert(merged.end(), next, m_objects.end());
    m_objects = std::move(merged);
}

std::unique_ptr<Object> Document::takeOut(Handle handle)
{
    auto node = m_byHandle.extract(handle);
    return std::move(node.mapped());
}

Document::Erased Document::erase(Handle handle)
{
    Object* object = find(handle);
    if (!object) {
        throw DrawingError("there is no object to erase");
    }
    if (handle == m_modelSpace || handle == m_paperSpace || handle == m_objects.front() ||
        dynamic_cast<Table*>(object)) {
        throw DrawingError("a drawing can't be without this object");
    }
    Erased erased;
    if (std::vector<Handle>* list = listOf(*object)) {
        const auto place = std::find(list->begin(), list->end(), handle);
        erased.position = static_cast<std::size_t>(place - list->begin());
        if (place != list->end()) {
            list->erase(place);
        }
    }
    std::vector<Handle> parts = partsOf(*object);
    std::vector<Handle> holders = parts;
    holders.push_back(handle);
    const std::vector<Handle> extensions = extensionsOf(holders);
    parts.insert(parts.end(), extensions.begin(), extensions.end());
    for (const Handle part : parts) {
        tieReactor(*find(part), false);
    }
    erased.listed = unlist(parts);
    for (const Handle part : parts) {
        erased.parts.push_back(takeOut(part));
    }
    erased.object = takeOut(handle);
    return erased;
}

Object& Document::restore(Erased erased)
{
    Object& object = store(std::move(erased.object));
    std::vector<Handle> parts;
    for (auto& part : erased.parts) {
        parts.push_back(store(std::move(part)).handle);
    }
    for (const Handle part : parts) {
        tieReactor(*find(part), true);
    }
    relist(erased.listed);
    if (std::vector<Handle>* list = listOf(object)) {
        const auto position = std::min(erased.position, list->size());
        list->insert(list->begin() + static_cast<std::ptrdiff_t>(position), object.handle);
    }
    return object;
}

} // namespace drawing
