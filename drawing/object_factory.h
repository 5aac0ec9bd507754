#pragma once

#include <memory>
#include <string_view>

#include "drawing/entities.h"
#include "drawing/objects.h"
#include "drawing/tables.h"

namespace drawing {

// An empty object for a record of a file, by the record's name; names that aren't known give a raw object.
std::unique_ptr<Entity> makeEntity(std::string_view name);
std::unique_ptr<TableRecord> makeTableRecord(std::string_view name);
std::unique_ptr<Object> makeObject(std::string_view name);

} // namespace drawing
