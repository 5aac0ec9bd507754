// The objects that hold a drawing together: the controls of its tables, the headers of its blocks, and the list of its
// viewports.
#pragma once

#include <string>
#include <vector>

#include "drawing/dwg/object_fields.h"

namespace drawing::dwg {

/// The records of a table, in its order.
struct ControlFields
{
    std::vector<Handle> records;
    // Records that stand apart from the others: model and paper space, the linetypes ByLayer and ByBlock.
    std::vector<Handle> special;
};
/// `type`: of the control (TableType::control).
void controlFields(ObjectFields& f, int type, ControlFields& control);

/// What a block's header tells besides its groups; DXF has it at the block's beginning, or in the order of its lines.
struct BlockHeaderFields
{
    int flags = 0; // Block::Flag
    Vector3 basePoint;
    std::string externalPath;
    std::string description;
    Handle begin = 0;
    Handle end = 0;
    Handle first = 0; // of the entities
    Handle last = 0;
    std::vector<Handle> references; // the block references that show the block
};
void blockHeaderFields(ObjectFields& f, BlockHeaderFields& block);

/// An entry of the list of viewports, which holds those of the layout that is current.
struct ViewportEntryFields
{
    bool on = true;
    Handle viewport = 0;
    Handle next = 0; // entry
};
void viewportEntryFields(ObjectFields& f, ViewportEntryFields& entry);

} // namespace drawing::dwg
