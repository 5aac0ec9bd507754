#pragma once

#include <windows.h>
#include <optional>

namespace desk::script {

/// What a cursor tells of the module's tool that shows it. The tools' numbers are those of docs/desk.md.
struct ToolCursor
{
    enum class Kind
    {
        own,      // shown by one tool alone
        moveSign, // over what can be moved, by the area, the paste and the free rotate tool
        arrow,    // by anyone
        other
    };

    Kind kind = Kind::other;
    int tool = -1; // of Kind::own
};

/// Compared by its picture with those in the loaded modules' resources.
ToolCursor toolCursor(HCURSOR cursor);

} // namespace desk::script
