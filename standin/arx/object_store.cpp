#include "standin/arx/object_store.h"

#include "standin/arx/dbdict.h"
#include "standin/arx/dbentity.h"
#include "standin/arx/imgdef.h"
#include "standin/arx/imgent.h"
#include "standin/arx/imgvars.h"
#include "standin/host.h"

namespace standin {

namespace {

using Stubs = std::unordered_map<const AcDbStub*, std::unique_ptr<AcDbStub>>;

// Never destroyed, like the document whose objects it holds.
Stubs& allStubs()
{
    static auto& stubs = *new Stubs;
    return stubs;
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
    AcDbStub*& stub = database.state().stubs[handle];
    if (!stub) {
        auto made = std::make_unique<AcDbStub>();
        made->database = &database;
        made->handle = handle;
        stub = made.get();
        allStubs().emplace(stub, std::move(made));
    }
    return AcDbObjectId::fromStub(stub);
}

AcDbStub* knownStub(std::int64_t word)
{
    auto* stub = reinterpret_cast<AcDbStub*>(word);
    return allStubs().count(stub) ? stub : nullptr;
}

drawing::Object* recordOf(const AcDbStub* stub)
{
    if (!stub || !stub->database)
        return nullptr;
    if (stub->erased)
        return stub->erased->object.get();
    return stub->database->state().document.find(stub->handle);
}

AcDbObject* objectOf(AcDbStub& stub)
{
    if (!stub.object)
        if (const drawing::Object* record = recordOf(&stub)) {
            stub.object = makeObject(*record);
            stub.object->setObjectId(AcDbObjectId::fromStub(&stub));
        }
    return stub.object.get();
}

int openObjects()
{
    int count = 0;
    for (const auto& [key, stub] : allStubs())
        count += stub->database && stub->open();
    return count;
}

} // namespace standin
