// The order in which a block's entities cover each other.

#include <algorithm>
#include <unordered_map>

#include "drawing/document.h"
#include "drawing/numbers.h"

namespace drawing {

namespace {

// From an entity's handle to the handle by which it is sorted instead of its own.
using SortHandles = std::unordered_map<Handle, Handle>;

// A draw order that differs from the list's is stored in the dictionary "ACAD_SORTENTS" entry of the block's
// extension.
SortHandles sortHandlesOf(const Document& document, const Block& block)
{
    SortHandles sorted;
    const auto* extension = document.find<Dictionary>(block.extensionDictionary);
    const auto* table = extension ? document.find<RawObject>(extension->find("ACAD_SORTENTS")) : nullptr;
    if (!table) {
        return sorted;
    }
    for (const KeptGroups& kept : table->kept) {
        Handle entity = 0;
        for (const Group& group : kept.groups) {
            const Handle value = parseHandle(group.value).value_or(0);
            if (group.code == 331) {
                entity = value;
            } else if (group.code == 5 && entity != 0) {
                sorted[entity] = value;
            }
        }
    }
    return sorted;
}

} // namespace

std::vector<const Entity*> Document::drawOrder(const Block& block) const
{
    std::vector<const Entity*> order;
    order.reserve(block.entities.size());
    for (const Handle handle : block.entities) {
        if (const auto* entity = find<Entity>(handle)) {
            order.push_back(entity);
        }
    }
    const SortHandles sorted = sortHandlesOf(*this, block);
    if (!sorted.empty()) {
        const auto key = [&](const Entity* entity) {
            const auto found = sorted.find(entity->handle);
            return found == sorted.end() ? entity->handle : found->second;
        };
        std::stable_sort(order.begin(), order.end(), [&](const Entity* a, const Entity* b) { return key(a) < key(b); });
    }
    return order;
}

std::vector<Entity*> Document::drawOrder(const Block& block)
{
    std::vector<Entity*> order;
    for (const Entity* entity : std::as_const(*this).drawOrder(block)) {
        order.push_back(const_cast<Entity*>(entity));
    }
    return order;
}

} // namespace drawing
