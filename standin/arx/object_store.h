// What lies behind an object id: the record in the drawing, the object that stands for it, and how it is open.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

#include "drawing/drawing_file.h"
#include "drawing/mendings.h"
#include "standin/arx/dbmain.h"
#include "standin/arx/edit_log.h"

/// One per object that was ever asked for. It outlives the object and the database, so that an old id stays safe to
/// ask.
struct standin::ObjectSlot
{
    AcDbDatabase* database = nullptr; // null once the database has gone
    drawing::Handle handle = 0;
    std::unique_ptr<AcDbObject> object; // made when it is first needed
    int readers = 0;
    bool writer = false;
    int notifiers = 0;                               // for notification it opens whatever else has it open
    std::optional<drawing::Document::Erased> erased; // the record, while it is out of the drawing

    bool open() const { return writer || readers > 0 || notifiers > 0; }
};

namespace standin {

/// What has changed in a drawing since it was opened or saved.
class DrawingChanges
{
public:
    void note() { m_noted = true; }
    /// A definition was loaded or unloaded; a second turn leaves it as it was.
    void turn(drawing::Handle definition)
    {
        if (m_turned.erase(definition) == 0)
            m_turned.insert(definition);
    }
    bool any() const { return m_noted || !m_turned.empty(); }
    void clear() { *this = {}; }

private:
    bool m_noted = false;
    std::set<drawing::Handle> m_turned;
};

} // namespace standin

struct AcDbDatabase::State
{
    drawing::Document document;
    drawing::Notes notes; // of its file: what was mended when it was read, or left out when it was written
    std::wstring fileName;
    drawing::DrawingForm form = drawing::DrawingForm::DxfText; // of its file
    standin::DrawingChanges changes;
    standin::EditLog edits;
    std::unordered_map<drawing::Handle, standin::ObjectSlot*> slots;
};

namespace standin {

AcDbObjectId idOf(AcDbDatabase& database, drawing::Handle handle);
/// Null unless the word is one that idOf gave.
standin::ObjectSlot* knownSlot(std::int64_t word);

/// Null if the database or the record has gone; an erased object's record is there still.
drawing::Object* recordOf(const standin::ObjectSlot* slot);
template <class Record> Record* recordOf(AcDbObjectId id)
{
    return dynamic_cast<Record*>(recordOf(id.slot()));
}

/// The object for a record that is there; null if the record is not.
AcDbObject* objectOf(standin::ObjectSlot& slot);

/// Every object that was made for a record of a database that is still there.
std::vector<AcDbObject*> presentObjects();

/// Whether the slot's record is an entity on a locked layer.
bool onLockedLayer(const standin::ObjectSlot& slot);

/// Calls with the object open for write whatever the document's locks, for what the host does itself. A busy object is
/// used as it is.
template <class Call> void withWriteOpen(standin::ObjectSlot& slot, Call call)
{
    const bool before = slot.writer;
    slot.writer = true;
    call();
    slot.writer = before;
}

} // namespace standin
