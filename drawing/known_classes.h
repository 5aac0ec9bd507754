#pragma once

#include <span>
#include <string_view>

namespace drawing {

/// A kind of object that readers know by a file's list of classes only.
struct KnownClass
{
    std::string_view name;
    std::string_view className;
    std::string_view application;
    int flags = 0; // what a program without the class may do with its objects
    bool entity = false;
};

/// Those that a drawing of ours may hold.
std::span<const KnownClass> knownClasses();

} // namespace drawing
