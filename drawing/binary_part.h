#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "drawing/object.h"

namespace drawing {

/// An object, or the part of it, that stands in the host's binary form and that nobody here understands: its bits and
/// the handles behind them, as they were found. Only files of that form can hold it.
struct BinaryPart
{
    struct Reference
    {
        std::uint8_t kind = 0; // the form's own code: owner or pointer, soft or hard
        Handle handle = 0;     // never a step
        bool operator==(const Reference&) const = default;
    };
    /// Extended data of an application, in a form that is none of the known ones.
    struct Extension
    {
        Handle application = 0;
        std::string bytes;
        bool operator==(const Extension&) const = default;
    };

    int type = 0;          // of a kind that all files know; 0: told by the class
    std::string className; // of the record in the list of classes
    bool whole = false;    // the bits are all that there is of the object besides what all objects have
    std::string bits;      // the most significant of each byte first
    std::size_t bitCount = 0;
    std::vector<Reference> references;
    std::vector<Extension> extensions;
    bool operator==(const BinaryPart&) const = default;
};

/// True if the object is held by its bits alone, so that only a file of that form can take it.
inline bool isOnlyBinary(const Object& object)
{
    return object.binary && object.binary->whole;
}

} // namespace drawing
