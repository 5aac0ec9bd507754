#include "drawing/dwg/record_names.h"

#include <algorithm>

#include "drawing/error.h"
#include "drawing/lower_case.h"

namespace drawing::dwg {

namespace {

std::string keyOf(std::string_view kind, std::string_view name)
{
    std::string key(kind);
    key += ' ';
    key += lowerCase(name);
    return key;
}

// In bytes; the host takes 255 characters. Every object repeats the names that it refers to.
constexpr std::size_t longestName = 1024;
constexpr std::size_t shownOfName = 40;

constexpr int byLayerNumber = 0x7FFF;
constexpr int byBlockNumber = 0x7FFE;

} // namespace

int RecordNames::linetypeNumber(std::string_view name) const
{
    const std::string lower = lowerCase(name);
    if (lower == "bylayer" || lower == "byblock") {
        return lower == "bylayer" ? byLayerNumber : byBlockNumber;
    }
    const auto found = std::find(m_linetypes.begin(), m_linetypes.end(), find("LTYPE", name));
    return found == m_linetypes.end() ? byLayerNumber : static_cast<int>(found - m_linetypes.begin());
}

std::string RecordNames::linetypeOfNumber(int number) const
{
    if (number == byLayerNumber || number == byBlockNumber) {
        return number == byLayerNumber ? "BYLAYER" : "BYBLOCK";
    }
    const auto place = static_cast<std::size_t>(number);
    return number >= 0 && place < m_linetypes.size() ? nameOf(m_linetypes[place]) : "BYLAYER";
}

void RecordNames::add(std::string_view kind, std::string_view name, Handle handle)
{
    if (name.size() > longestName) {
        throw DrawingError("the name \"" + std::string(name.substr(0, shownOfName)) + "...\" is too long");
    }
    m_names.insert_or_assign(handle, std::string(name));
    m_handles.try_emplace(keyOf(kind, name), handle);
}

const std::string& RecordNames::nameOf(Handle handle) const
{
    static const std::string none;
    const auto found = m_names.find(handle);
    return found == m_names.end() ? none : found->second;
}

Handle RecordNames::find(std::string_view kind, std::string_view name) const
{
    const auto found = m_handles.find(keyOf(kind, name));
    return found == m_handles.end() ? 0 : found->second;
}

Handle RecordNames::obtain(std::string_view kind, std::string_view name)
{
    if (const Handle present = find(kind, name)) {
        return present;
    }
    m_made.push_back({std::string(kind), std::string(name), m_next});
    add(kind, name, m_next);
    return m_next++;
}

} // namespace drawing::dwg
