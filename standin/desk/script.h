#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "standin/desk/script_directives.h"

namespace desk::script {

struct Step
{
    int line = 0;        // counted from 1
    std::wstring source; // as written, without the blanks around it
    Action action;

    /// It expects something or takes a picture.
    bool onlyLooks() const { return source.starts_with(L"@expect") || source.starts_with(L"@shot"); }
};

/// text is UTF-8, with or without a byte order mark. Relative paths are taken from `folder`.
/// Lines that are empty or begin with ';' are passed over. Throws ScriptError; the message names the line.
std::vector<Step> parse(std::string_view text, const std::filesystem::path& folder);

/// Throws ScriptError also if the file can't be read.
std::vector<Step> load(const std::filesystem::path& file);

} // namespace desk::script
