#include "drawing/dwg/class_list.h"

#include <set>

#include "drawing/dwg/kinds.h"
#include "drawing/known_classes.h"

namespace drawing::dwg {

namespace {

// Classes that a drawing needs only where it has an object of them.
constexpr KnownClass occasionalClasses[] = {
    {"MESH", "AcDbSubDMesh", "ObjectDBX Classes", 0, true},
    {"WIPEOUT", "AcDbWipeout", "WipeOut", 127, true},
    {"WIPEOUTVARIABLES", "AcDbWipeoutVariables", "WipeOut"},
};

std::set<std::string_view> namesOf(const Document& document)
{
    std::set<std::string_view> names;
    const auto add = [&](const std::vector<Handle>& handles) {
        for (const Handle handle : handles) {
            if (const Object* object = document.find(handle)) {
                names.insert(object->name());
            }
        }
    };
    add(document.objects());
    for (const Handle handle : document.table("BLOCK_RECORD").records) {
        if (const auto* block = document.find<Block>(handle)) {
            add(block->entities);
        }
    }
    return names;
}

std::string keyOf(std::string_view recordName, std::string_view className)
{
    std::string key(recordName);
    if (!className.empty()) {
        key += '\0';
        key += className;
    }
    return key;
}

ObjectClass classOf(const KnownClass& known)
{
    ObjectClass each;
    each.recordName = known.name;
    each.className = known.className;
    each.application = known.application;
    each.flags = known.flags;
    each.entity = known.entity;
    return each;
}

} // namespace

ClassList::ClassList(const Document& document)
{
    for (const Groups& groups : document.classes) {
        add(classOfGroups(groups));
    }
    for (const KnownClass& known : knownClasses()) {
        if (typeOf(known.name) == 0) {
            add(classOf(known));
        }
    }
    const std::set<std::string_view> names = namesOf(document);
    for (const KnownClass& known : occasionalClasses) {
        if (names.contains(known.name) && typeOf(known.name) == 0) {
            add(classOf(known));
        }
    }
}

void ClassList::add(ObjectClass each)
{
    if (typeOf(each.recordName, each.className) == 0) {
        each.number = firstClassType + static_cast<int>(m_classes.size());
        m_types.emplace(keyOf(each.recordName, {}), each.number);
        m_types.emplace(keyOf(each.recordName, each.className), each.number);
        m_classes.push_back(std::move(each));
    }
}

int ClassList::typeOf(std::string_view recordName, std::string_view className) const
{
    const auto found = m_types.find(keyOf(recordName, className));
    return found == m_types.end() ? 0 : found->second;
}

} // namespace drawing::dwg
