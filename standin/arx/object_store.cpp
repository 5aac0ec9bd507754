#include "standin/arx/object_store.h"

#include "standin/arx/dbdict.h"
#include "standin/arx/dbentity.h"
#include "standin/arx/imgdef.h"
#include "standin/arx/imgent.h"
#include "standin/arx/imgvars.h"
#include "standin/host.h"

namespace standin {

namespace {

using Slots = std::unordered_map<const standin::ObjectSlot*, std::unique_ptr<standin::ObjectSlot>>;

// Never destroyed, like the document whose objects it holds.
Slots& allSlots()
{
    static auto& slots = *new Slots;
    return slots;
}

// A record of a kind that has no class of its own here.
class PlainObject final : public AcDbObject
{};

std::unique_ptr<AcDbObject> makeObject(const drawing::Object& record)
{
    if (dynamic_cast<const drawing::Image*>(&record))
        return std::make_unique<AcDbRasterImage>();
    if (dynamic_cast<const drawing::ImageDefinition*>(&record))
        return std::make_unique<AcDbRasterImageDef>();
    if (dynamic_cast<const drawing::RasterVariables*>(&record))
        return std::make_unique<AcDbRasterVariables>();
    if (dynamic_cast<const drawing::Dictionary*>(&record))
        return std::make_unique<AcDbDictionary>();
    if (dynamic_cast<const drawing::Entity*>(&record))
        return std::make_unique<AcDbEntity>();
    return std::make_unique<PlainObject>();
}

} // namespace

AcDbObjectId idOf(AcDbDatabase& database, drawing::Handle handle)
{
    if (handle == 0)
        return {};
    standin::ObjectSlot*& slot = database.state().slots[handle];
    if (!slot) {
        auto made = std::make_unique<standin::ObjectSlot>();
        made->database = &database;
        made->handle = handle;
        slot = made.get();
        allSlots().emplace(slot, std::move(made));
    }
    return AcDbObjectId::fromSlot(slot);
}

standin::ObjectSlot* knownSlot(std::int64_t word)
{
    auto* slot = reinterpret_cast<standin::ObjectSlot*>(word);
    return allSlots().count(slot) ? slot : nullptr;
}

drawing::Object* recordOf(const standin::ObjectSlot* slot)
{
    if (!slot || !slot->database)
        return nullptr;
    if (slot->erased)
        return slot->erased->object.get();
    return slot->database->state().document.find(slot->handle);
}

AcDbObject* objectOf(standin::ObjectSlot& slot)
{
    if (!slot.object) {
        if (const drawing::Object* record = recordOf(&slot)) {
            slot.object = makeObject(*record);
            slot.object->setObjectId(AcDbObjectId::fromSlot(&slot));
        }
    }
    return slot.object.get();
}

bool onLockedLayer(const standin::ObjectSlot& slot)
{
    const auto* entity = dynamic_cast<const drawing::Entity*>(recordOf(&slot));
    const drawing::Layer* layer = entity ? slot.database->state().document.findLayer(entity->layer) : nullptr;
    return layer && layer->locked();
}

std::vector<AcDbObject*> presentObjects()
{
    std::vector<AcDbObject*> objects;
    for (const auto& [key, slot] : allSlots()) {
        if (slot->object)
            objects.push_back(slot->object.get());
    }
    return objects;
}

int openObjects()
{
    int count = 0;
    for (const auto& [key, slot] : allSlots())
        count += slot->database && slot->open();
    return count;
}

} // namespace standin
