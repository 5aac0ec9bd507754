#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "standin/host.h"

namespace desk {

/// One change of the drawing that can be taken back: an entity was added or erased, or a raster edited.
struct Edit
{
    std::uint64_t object = 0;                             // the entity, or the raster's definition
    bool added = false;                                   // of an entity; false: erased
    std::shared_ptr<const standin::RasterState> raster{}; // how the raster was on the other side of the edit

    friend bool operator==(const Edit&, const Edit&) = default;
};

/// What one command changed, in the order in which it did so, or one stroke of a tool.
struct EditGroup
{
    std::vector<Edit> edits;
    std::uint64_t serial = 0; // the later it was made, in whichever history, the greater
};

/// The edits of a drawing, for Undo and Redo.
class EditHistory
{
public:
    /// Carries an edit out the other way round and makes it the edit that leads back. False, with all as it was, if it
    /// can't be done now.
    using Turn = std::function<bool(Edit&)>;

    /// Gathers edits until commit; an empty group is dropped.
    void record(Edit edit) { m_open.push_back(std::move(edit)); }
    void commit();
    void clear();

    bool canUndo() const { return !m_done.empty(); }
    bool canRedo() const { return !m_undone.empty(); }
    /// Takes the latest group back, its last edit first; redo carries it out again. False if there is none or an edit
    /// could not be carried out; then the edits before it are put back and the history stays as it was.
    bool undo(const Turn& turn);
    bool redo(const Turn& turn);

    /// The serial of the oldest group that can be taken back and holds pixels; 0 if there is none.
    std::uint64_t oldestWithPixels() const;
    /// How many groups that can be taken back hold pixels.
    std::size_t groupsWithPixels() const;
    /// Forgets the groups up to and with that one.
    void forgetUpTo(std::uint64_t serial);
    /// Calls with each raster that is kept, whether to undo or to redo.
    void forEachRaster(const std::function<void(const standin::RasterState&)>& call) const;

private:
    std::vector<Edit> m_open;
    std::vector<EditGroup> m_done, m_undone;
};

/// What the pixels may take in all that histories keep: those of seven sheets of 20,000 by 14,000 pixels.
inline constexpr std::size_t mostKeptPixelBytes = std::size_t(256) << 20;

/// Has the histories forget their oldest edits of rasters, whichever drawing's they are, until what they keep is within
/// the limit. The latest edit of all stays.
void limitKeptPixels(const std::vector<EditHistory*>& histories, std::size_t limit = mostKeptPixelBytes);

} // namespace desk
