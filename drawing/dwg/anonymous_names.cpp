#include "drawing/dwg/anonymous_names.h"

#include "drawing/lower_case.h"

namespace drawing::dwg {

namespace {

bool isAnonymous(std::string_view name)
{
    constexpr std::size_t letterSize = 2;
    return (name.size() == letterSize && name[0] == '*') || lowerCase(name) == "*paper_space";
}

} // namespace

std::string numberedBlockName(std::string_view stored, std::size_t place)
{
    return isAnonymous(stored) ? std::string(stored) + std::to_string(place) : std::string(stored);
}

std::string storedBlockName(std::string_view name)
{
    const std::string_view stem = name.substr(0, name.find_last_not_of("0123456789") + 1);
    return std::string(isAnonymous(stem) ? stem : name);
}

} // namespace drawing::dwg
