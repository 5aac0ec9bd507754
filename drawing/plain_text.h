#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace drawing {

/// What a TEXT, ATTRIB or ATTDEF shows: %%d, %%p, %%c and %%nnn as characters, underline and overline switches and
/// control codes (^I and the like) left out. UTF-8.
std::string plainText(std::string_view text);

/// The lines that an MTEXT shows, without its formatting codes; paragraphs become lines, stacked fractions "1/2". Long
/// lines are not broken here.
std::vector<std::string> plainLines(std::string_view mtext);

} // namespace drawing
