#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "standin/desk/script_words.h"

namespace desk::script {

class Player;

/// What a step does when it is played.
using Action = std::function<void(Player&)>;

/// One directive of the script language.
struct Directive
{
    std::wstring_view name; // the words behind the "@" that it is known by, such as "expect no tool"
    std::function<Action(Words&)> read;
};

std::span<const Directive> directives();

/// Reads what stands behind the "@" of a line. Throws ScriptError.
Action readDirective(Words& words);

} // namespace desk::script
