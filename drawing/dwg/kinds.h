#pragma once

#include <span>
#include <string_view>

#include "drawing/dwg/object_fields.h"

namespace drawing::dwg {

/// A kind of object as the form has it. What stands once here is read and written.
struct Kind
{
    int type = 0; // the number that all files know it by; 0: told by the file's list of classes
    bool entity = false;
    std::string_view name; // of the record in DXF
    void (*fields)(ObjectFields& f) = nullptr;
    /// Which of several kinds of one name a record is; null: the only one.
    bool (*holds)(const Record& record) = nullptr;
};

/// From this number on, a type says the place in the list of classes.
inline constexpr int firstClassType = 500;

// The kinds, by what they are; each in a file of its own.
std::span<const Kind> plainEntityKinds();
std::span<const Kind> curveKinds();
std::span<const Kind> polylineKinds();
std::span<const Kind> textKinds();
std::span<const Kind> dimensionKinds();
std::span<const Kind> hatchKinds();
std::span<const Kind> viewportKinds();
std::span<const Kind> tableRecordKinds();
std::span<const Kind> dimensionStyleKinds();
std::span<const Kind> dictionaryKinds();
std::span<const Kind> layoutKinds();
std::span<const Kind> imageKinds();
std::span<const Kind> multilineKinds();
std::span<const Kind> bodyKinds();
std::span<const Kind> underlayKinds();

// Null if there is none.
const Kind* kindOfType(int type);
const Kind* kindOfClass(std::string_view recordName);
const Kind* kindOfRecord(const Record& record);

// Numbers of kinds that make up the structure of a drawing.
enum StructureType
{
    blockType = 0x04,
    endBlockType = 0x05,
    blockControlType = 0x30,
    blockHeaderType = 0x31,
    viewportHeaderControlType = 0x46,
    viewportHeaderType = 0x47,
};

/// A table as the form has it: the kind of its control object and of its records.
struct TableType
{
    std::string_view kind; // "LAYER", ...
    int control = 0;
    int record = 0;
};
std::span<const TableType> tableTypes();

} // namespace drawing::dwg
