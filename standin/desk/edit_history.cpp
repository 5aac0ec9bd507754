#include "standin/desk/edit_history.h"

#include <algorithm>
#include <set>
#include <utility>

namespace desk {
namespace {

// Turns all edits, in order or from the last one on; on a failure those that were turned are turned back.
bool turnAll(std::vector<Edit>& edits, bool fromLast, const EditHistory::Turn& turn)
{
    const auto at = [&](std::size_t i) -> Edit& { return edits[fromLast ? edits.size() - 1 - i : i]; };
    for (std::size_t i = 0; i < edits.size(); ++i) {
        if (turn(at(i)))
            continue;
        while (i-- > 0)
            turn(at(i));
        return false;
    }
    return true;
}

bool holdsPixels(const EditGroup& group)
{
    return std::any_of(group.edits.begin(), group.edits.end(), [](const Edit& edit) {
        return edit.raster != nullptr && standin::pixelsHeld(*edit.raster).pixels != nullptr;
    });
}

std::size_t keptBytes(const std::vector<EditHistory*>& histories)
{
    std::size_t bytes = 0;
    std::set<const void*> counted;
    for (const EditHistory* history : histories) {
        history->forEachRaster([&](const standin::RasterState& raster) {
            const standin::PixelsHeld held = standin::pixelsHeld(raster);
            if (held.pixels != nullptr && counted.insert(held.pixels).second)
                bytes += held.bytes;
        });
    }
    return bytes;
}

} // namespace

void EditHistory::commit()
{
    static std::uint64_t latest = 0;
    if (m_open.empty())
        return;
    m_done.push_back({std::exchange(m_open, {}), ++latest});
    m_undone.clear();
}

void EditHistory::clear()
{
    m_open.clear();
    m_done.clear();
    m_undone.clear();
}

bool EditHistory::undo(const Turn& turn)
{
    if (m_done.empty() || !turnAll(m_done.back().edits, true, turn))
        return false;
    m_undone.push_back(std::move(m_done.back()));
    m_done.pop_back();
    return true;
}

bool EditHistory::redo(const Turn& turn)
{
    if (m_undone.empty() || !turnAll(m_undone.back().edits, false, turn))
        return false;
    m_done.push_back(std::move(m_undone.back()));
    m_undone.pop_back();
    return true;
}

std::uint64_t EditHistory::oldestWithPixels() const
{
    const auto oldest = std::find_if(m_done.begin(), m_done.end(), holdsPixels);
    return oldest == m_done.end() ? 0 : oldest->serial;
}

std::size_t EditHistory::groupsWithPixels() const
{
    return static_cast<std::size_t>(std::count_if(m_done.begin(), m_done.end(), holdsPixels));
}

void EditHistory::forgetUpTo(std::uint64_t serial)
{
    std::erase_if(m_done, [&](const EditGroup& group) { return group.serial <= serial; });
}

void EditHistory::forEachRaster(const std::function<void(const standin::RasterState&)>& call) const
{
    for (const auto* groups : {&m_done, &m_undone}) {
        for (const EditGroup& group : *groups) {
            for (const Edit& edit : group.edits) {
                if (edit.raster != nullptr)
                    call(*edit.raster);
            }
        }
    }
}

void limitKeptPixels(const std::vector<EditHistory*>& histories, std::size_t limit)
{
    while (keptBytes(histories) > limit) {
        EditHistory* oldest = nullptr;
        std::size_t candidates = 0;
        for (EditHistory* history : histories) {
            const std::uint64_t serial = history->oldestWithPixels();
            candidates += history->groupsWithPixels();
            if (serial != 0 && (oldest == nullptr || serial < oldest->oldestWithPixels()))
                oldest = history;
        }
        if (candidates < 2)
            return;
        oldest->forgetUpTo(oldest->oldestWithPixels());
    }
}

} // namespace desk
