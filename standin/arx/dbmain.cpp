#include "standin/arx/dbmain.h"

#include <filesystem>
#include <set>

#include "drawing/drawing_file.h"
#include "drawing/error.h"
#include "standin/arx/desk_services.h"
#include "standin/arx/document_manager.h"
#include "standin/arx/document_merge.h"
#include "standin/arx/edit_log.h"
#include "standin/arx/editor.h"
#include "standin/arx/imgdef.h"
#include "standin/arx/object_store.h"
#include "standin/arx/rx_define.h"
#include "standin/arx/strictness.h"
#include "standin/arx/text.h"

ACRX_DEFINE_MEMBERS(AcDbDatabase, AcRxObject)

AcDbDatabase::AcDbDatabase(bool, bool) : m_state(std::make_unique<State>())
{
    standin::editor().tell([this](AcEditorReactor& reactor) { reactor.databaseConstructed(this); });
}

// First the editor's reactors are told, then those of the images that are loaded; then the ids lose their database.
AcDbDatabase::~AcDbDatabase()
{
    standin::editor().tell([this](AcEditorReactor& reactor) { reactor.databaseToBeDestroyed(this); });
    const auto slots = m_state->slots;
    for (const auto& [handle, slot] : slots) {
        if (slot->open())
            standin::recordBreach("An object was still open when its database was destroyed.");
    }
    for (const auto& [handle, slot] : slots) {
        if (auto* definition = dynamic_cast<AcDbRasterImageDef*>(slot->object.get()))
            standin::withWriteOpen(*slot, [&] { definition->releaseImage(); });
    }
    for (const auto& [handle, slot] : m_state->slots) {
        slot->database = nullptr;
        slot->readers = 0;
        slot->writer = false;
        slot->notifiers = 0;
        slot->object.reset();
        slot->erased.reset();
    }
}

Acad::ErrorStatus AcDbDatabase::readDwgFile(const ACHAR* fileName, int, bool, const wchar_t*)
{
    if (!fileName || !*fileName)
        return Acad::eInvalidInput;
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(fileName, error);
    if (!std::filesystem::is_regular_file(path, error))
        return Acad::eFileNotFound;
    if (!m_state->slots.empty())
        return Acad::eInvalidContext;
    try {
        m_state->document = drawing::readDrawing(path);
    } catch (const drawing::DrawingError&) {
        return Acad::eDwgNeedsRecovery;
    }
    m_state->fileName = path.wstring();
    return Acad::eOk;
}

namespace {

template <class Call> void withDefinition(AcDbDatabase& database, drawing::Handle handle, Call call)
{
    standin::ObjectSlot& slot = *standin::idOf(database, handle).slot();
    if (auto* definition = dynamic_cast<AcDbRasterImageDef*>(standin::objectOf(slot)))
        standin::withWriteOpen(slot, [&] { call(*definition); });
}

// The file that a definition shows now, or the name of the one that is missing.
std::wstring fileShown(AcDbDatabase& database, drawing::Handle handle)
{
    std::wstring file;
    withDefinition(database, handle, [&](const AcDbRasterImageDef& definition) {
        file = definition.activeFileName();
        if (file.empty())
            file = definition.sourceFileName();
    });
    return file;
}

// A file that the definition's own name does not lead to is shown all the same.
void showFile(AcDbDatabase& database, drawing::Handle handle, const std::wstring& file)
{
    withDefinition(database, handle, [&](AcDbRasterImageDef& definition) {
        if (file != definition.activeFileName() && file != definition.sourceFileName())
            definition.setActiveFileName(file.c_str());
    });
}

} // namespace

Acad::ErrorStatus AcDbDatabase::insert(const AcGeMatrix3d& transform, AcDbDatabase* source, bool preserveSource)
{
    if (!source || source == this || !preserveSource)
        return Acad::eInvalidInput;
    for (unsigned row = 0; row < 4; ++row) {
        for (unsigned column = 0; column < 4; ++column) {
            if (transform(row, column) != (row == column ? 1 : 0))
                return Acad::eNotApplicable;
        }
    }
    if (!standin::mayWrite(this)) {
        standin::recordBreach("A drawing was inserted without a document lock.");
        return Acad::eLockViolation;
    }
    const std::vector<drawing::Handle>& entities = m_state->document.modelSpace().entities;
    const std::size_t before = entities.size(); // what comes in lies behind them
    const auto showOneFile = [&](drawing::Handle present, drawing::Handle added) {
        return fileShown(*this, present) == fileShown(*source, added);
    };
    const auto added = standin::mergeModelSpace(m_state->document, source->m_state->document, showOneFile);
    for (const auto& [from, to] : added)
        showFile(*this, to, fileShown(*source, from));
    for (std::size_t i = before; i < entities.size(); ++i)
        standin::noteEntityChange(this, entities[i], true);
    m_state->changes.note();
    if (this == standin::drawingDatabase() && standin::deskServices())
        standin::deskServices()->redraw();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& target, const AcDbObjectIdArray& entities,
                                       const AcGePoint3d& basePoint)
{
    target = nullptr;
    std::set<drawing::Handle> handles;
    for (int i = 0; i < entities.length(); ++i) {
        if (entities[i].database() != this)
            return Acad::eWrongDatabase;
        if (!entities[i].isErased())
            handles.insert(entities[i].handle());
    }
    if (handles.empty())
        return Acad::eInvalidInput;
    auto made = std::make_unique<AcDbDatabase>(false, true);
    made->m_state->document =
        standin::extractEntities(m_state->document, handles, {basePoint.x, basePoint.y, basePoint.z});
    target = made.release();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::saveAs(const ACHAR* fileName, bool, AcDb::AcDbDwgVersion version, const void* security)
{
    if (!fileName || !*fileName || version != AcDb::kDHL_1015 || security)
        return Acad::eInvalidInput;
    const std::wstring name = fileName;
    standin::editor().tell([&](AcEditorReactor& reactor) { reactor.beginSave(this, name.c_str()); });
    try {
        drawing::writeDrawing(m_state->document, std::filesystem::path(name), drawing::DrawingForm::Dwg);
    } catch (const drawing::DrawingError&) {
        standin::editor().tell([this](AcEditorReactor& reactor) { reactor.abortSave(this); });
        return Acad::eFileAccessErr;
    }
    standin::editor().tell([&](AcEditorReactor& reactor) { reactor.saveComplete(this, name.c_str()); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::getFilename(const ACHAR*& fileName) const
{
    fileName = m_state->fileName.c_str();
    return Acad::eOk;
}

bool AcDbDatabase::tilemode() const
{
    return m_state->document.header.integer("$TILEMODE", 1) != 0;
}
