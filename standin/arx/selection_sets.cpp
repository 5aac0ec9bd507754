// Selection sets. A set's name holds its number and, in the second word, a mark that no entity's name has.
#include "standin/arx/selection_sets.h"

#include <algorithm>
#include <map>

#include "standin/arx/acedads.h"
#include "standin/arx/desk_services.h"
#include "standin/arx/object_store.h"
#include "standin/arx/strictness.h"
#include "standin/arx/text.h"

namespace {

constexpr std::int64_t setMark = 1;

using Set = std::vector<AcDbObjectId>;

std::map<std::int64_t, Set>& sets()
{
    static std::map<std::int64_t, Set> all;
    return all;
}

Set* findSet(const ads_name name)
{
    const auto found = name[1] == setMark ? sets().find(name[0]) : sets().end();
    return found == sets().end() ? nullptr : &found->second;
}

// The tab that shows an entity: its block's name in the dictionary of layouts.
std::string layoutName(const drawing::Document& document, const drawing::Entity& entity)
{
    const auto* block = document.find<drawing::Block>(entity.owner);
    const auto* layouts = document.find<drawing::Dictionary>(document.rootDictionary().find("ACAD_LAYOUT"));
    if (!block || !layouts)
        return {};
    const auto found = std::find_if(layouts->entries.begin(), layouts->entries.end(),
                                    [&](const auto& entry) { return entry.object == block->layout; });
    return found == layouts->entries.end() ? std::string() : found->key;
}

enum FilterGroup : short
{
    typeName = 0,
    layerName = 8,
    inPaperSpace = 67,
    layout = 410
};

bool known(const resbuf* filter)
{
    for (const resbuf* item = filter; item; item = item->rbnext) {
        const short group = item->restype;
        if (group != typeName && group != layerName && group != inPaperSpace && group != layout) {
            standin::recordBreach("A selection was filtered by group " + std::to_string(group) +
                                  ", which is no filter here.");
            return false;
        }
    }
    return true;
}

bool matches(const drawing::Document& document, const drawing::Entity& entity, const resbuf& item)
{
    const auto sameName = [&](std::string_view name) {
        return standin::sameText(standin::fromUtf8(name), item.resval.rstring);
    };
    switch (item.restype) {
    case typeName:
        return sameName(entity.name());
    case layerName:
        return sameName(entity.layer);
    case inPaperSpace:
        return item.resval.rint == (entity.owner == document.modelSpace().handle ? 0 : 1);
    default:
        return sameName(layoutName(document, entity));
    }
}

bool matchesAll(const drawing::Document& document, const drawing::Entity& entity, const resbuf* filter)
{
    for (const resbuf* item = filter; item; item = item->rbnext) {
        if (!matches(document, entity, *item))
            return false;
    }
    return true;
}

// All entities of the model space and the paper spaces, those drawn last at the end.
std::vector<drawing::Handle> allEntities(const drawing::Document& document)
{
    std::vector<drawing::Handle> handles;
    for (const drawing::Handle record : document.table("BLOCK_RECORD").records) {
        const auto* block = document.find<drawing::Block>(record);
        if (block && block->layout != 0) {
            for (const drawing::Entity* entity : document.drawOrder(*block))
                handles.push_back(entity->handle);
        }
    }
    return handles;
}

} // namespace

int acedSSGet(const ACHAR* mode, const void* point1, const void* point2, const resbuf* filter, ads_name set)
{
    ads_name_clear(set);
    AcDbDatabase* database = standin::drawingDatabase();
    if (!database || point1 || point2 || !known(filter))
        return RTERROR;
    const drawing::Document& document = database->state().document;
    std::vector<drawing::Handle> handles;
    if (!mode || !*mode) {
        if (!standin::deskServices())
            return RTERROR;
        auto selected = standin::deskServices()->selectEntities();
        if (!selected)
            return RTCAN;
        handles = std::move(*selected);
    } else if (standin::sameText(mode, L"X") || standin::sameText(mode, L"_X")) {
        handles = allEntities(document);
    } else {
        return RTERROR;
    }
    Set chosen;
    for (const drawing::Handle handle : handles) {
        const auto* entity = document.find<drawing::Entity>(handle);
        if (entity && matchesAll(document, *entity, filter))
            chosen.push_back(standin::idOf(*database, handle));
    }
    if (chosen.empty())
        return RTERROR;
    static std::int64_t lastNumber = 0;
    sets().emplace(++lastNumber, std::move(chosen));
    set[0] = lastNumber;
    set[1] = setMark;
    return RTNORM;
}

int acedSSLength(const ads_name set, Adesk::Int32* length)
{
    const Set* found = findSet(set);
    *length = found ? Adesk::Int32(found->size()) : 0;
    return found ? RTNORM : RTERROR;
}

int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity)
{
    ads_name_clear(entity);
    const Set* found = findSet(set);
    if (!found || index < 0 || std::size_t(index) >= found->size())
        return RTERROR;
    ads_name name;
    acdbGetAdsName(name, (*found)[std::size_t(index)]);
    ads_name_set(name, entity);
    return RTNORM;
}

int acedSSFree(const ads_name set)
{
    if (!findSet(set)) {
        standin::recordBreach("A selection set was freed that is none.");
        return RTERROR;
    }
    sets().erase(set[0]);
    return RTNORM;
}

namespace standin {

int selectionSets()
{
    return int(sets().size());
}

void dropSelectionSets(int count)
{
    for (int i = 0; i < count; ++i)
        sets().erase(std::prev(sets().end()));
}

} // namespace standin
