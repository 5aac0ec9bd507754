// What all objects have besides the fields of their kind.
#pragma once

#include <vector>

#include "drawing/dwg/object_fields.h"

namespace drawing::dwg {

/// What an entity belongs to.
enum EntitySpace
{
    ownerSaid = 0, // by its handle
    paperSpace = 1,
    modelSpace = 2,
};

/// The handles that tie an object to others.
struct Ties
{
    Handle owner = 0;
    std::vector<Handle> reactors;
    Handle extensionDictionary = 0;
    // Of entities:
    int space = ownerSaid;
    bool neighboursAdjacent = false; // the entities before and behind have the handles before and behind
    Handle previous = 0;
    Handle next = 0;
};

/// The common fields of an object that is no entity.
void objectCommon(ObjectFields& f, Ties& ties);
/// Those of an entity, with the groups under the marker that all entities have.
void entityCommon(ObjectFields& f, Ties& ties);

} // namespace drawing::dwg
