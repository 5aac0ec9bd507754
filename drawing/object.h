#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace drawing {

class FieldVisitor;
struct BinaryPart;

/// Identifies an object within its drawing and through every save; 0 means none.
using Handle = std::uint64_t;
/// The highest that an object of a file may have: above it there is room for more new ones than a drawing can hold.
inline constexpr Handle highestHandleTaken = ~Handle(0) - (Handle(1) << 32);

/// One group of a DXF file: a code that says what the value means, and the value's text (UTF-8, as in the file but for
/// the file's encoding and \U+ escapes).
struct Group
{
    int code = 0;
    std::string value;
    bool operator==(const Group&) const = default;
};
using Groups = std::vector<Group>;

/// Groups that no field of ours holds, with the subclass marker that they stood under ("" before the first marker).
struct KeptGroups
{
    std::string subclass;
    Groups groups;
    bool operator==(const KeptGroups&) const = default;
};

/// What every record of a drawing has: entities, table records, dictionaries and the rest.
struct Object
{
    virtual ~Object() = default;

    /// The record's name in a DXF file, such as "LINE".
    virtual std::string_view name() const = 0;
    /// Shows every field to a reader or a writer; a writer changes none.
    virtual void fields(FieldVisitor& visitor) = 0;

    Handle handle = 0;
    Handle owner = 0;
    std::vector<Handle> reactors;
    Handle extensionDictionary = 0;

    /// Groups that are carried along, so that a save gives back what a load found.
    std::vector<KeptGroups> kept;
    Groups applicationGroups; // 102 "{NAME" ... 102 "}" of applications, in a row
    Groups embedded;          // from 101 "Embedded Object" on
    Groups extendedData;      // 1001 and what follows
    /// What only the host's binary form can hold; null as a rule.
    std::shared_ptr<const BinaryPart> binary;
};

} // namespace drawing
