#include "drawing/left_out.h"

#include "drawing/tables.h"

namespace drawing {

void LeftOut::addListed(const Document& document, const std::function<bool(const Object&)>& hasPlace)
{
    const auto addThose = [&](const std::vector<Handle>& handles) {
        for (const Handle handle : handles) {
            const Object* object = document.find(handle);
            if (object && !hasPlace(*object)) {
                add(object->name());
            }
        }
    };
    addThose(document.objects());
    for (const Handle handle : document.table("BLOCK_RECORD").records) {
        if (const auto* block = document.find<Block>(handle)) {
            addThose(block->entities);
        }
    }
}

Notes LeftOut::notes(std::string_view form) const
{
    std::string list;
    for (const auto& [name, count] : m_counts) {
        list += (list.empty() ? "" : ", ") + std::to_string(count) + " " + name;
    }
    return list.empty() ? Notes()
                        : Notes{"Left out, as " + std::string(form) + " has no place for them: " + list + "."};
}

} // namespace drawing
