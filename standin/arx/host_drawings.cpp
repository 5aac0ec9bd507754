// Opening, saving and closing the drawing.
#include "drawing/drawing_file.h"
#include "drawing/error.h"
#include "standin/arx/desk_services.h"
#include "standin/arx/document_manager.h"
#include "standin/arx/editor.h"
#include "standin/arx/modules.h"
#include "standin/arx/object_store.h"
#include "standin/arx/strictness.h"
#include "standin/arx/text.h"

namespace standin {

namespace {

OpenDocument* current()
{
    return documentManager().current();
}

void makeCurrent(std::unique_ptr<AcDbDatabase> database)
{
    auto document = std::make_unique<OpenDocument>();
    document->setDatabase(std::move(database));
    documentManager().setCurrent(std::move(document));
    dynamicLinker().send(AcRx::kLoadDwgMsg);
    if (deskServices())
        deskServices()->redraw();
}

} // namespace

Failure newDrawing()
{
    closeDrawing();
    makeCurrent(std::make_unique<AcDbDatabase>());
    return std::nullopt;
}

Failure openDrawing(const std::filesystem::path& path)
{
    if (path.empty())
        return newDrawing();
    closeDrawing();
    std::error_code error;
    const std::filesystem::path file = std::filesystem::absolute(path, error);
    drawing::Document document;
    drawing::Notes notes;
    try {
        document = drawing::readDrawing(file, &notes);
    } catch (const drawing::DrawingError& failure) {
        return fromUtf8(failure.what());
    }
    auto database = std::make_unique<AcDbDatabase>(false);
    database->state().document = std::move(document);
    database->state().notes = std::move(notes);
    database->state().fileName = file.wstring();
    makeCurrent(std::move(database));
    return std::nullopt;
}

Failure saveDrawing(const std::filesystem::path& path)
{
    if (!current())
        return L"No drawing is open.";
    std::error_code error;
    const std::wstring name = std::filesystem::absolute(path, error).wstring();
    AcDbDatabase* database = current()->database();
    editor().tell([&](AcEditorReactor& reactor) { reactor.beginSave(database, name.c_str()); });
    try {
        drawing::writeDrawing(database->state().document, name, drawing::formOfExtension(name));
    } catch (const drawing::DrawingError& failure) {
        editor().tell([&](AcEditorReactor& reactor) { reactor.abortSave(database); });
        return fromUtf8(failure.what());
    }
    database->state().fileName = name;
    database->state().changes.clear();
    editor().tell([&](AcEditorReactor& reactor) { reactor.saveComplete(database, name.c_str()); });
    return std::nullopt;
}

void closeDrawing()
{
    OpenDocument* document = current();
    if (!document)
        return;
    dynamicLinker().send(AcRx::kUnloadDwgMsg);
    document->destroyDatabase();
    if (!document->locks.empty()) {
        recordBreach("The drawing was closed with " + std::to_string(document->locks.size()) +
                     " document locks that nobody gave back.");
    }
    dynamicLinker().forgetLocks();
    documentManager().setCurrent(nullptr);
}

bool drawingOpen()
{
    return current() != nullptr;
}

bool drawingModified()
{
    return current() && current()->database()->state().changes.any();
}

std::filesystem::path drawingPath()
{
    return current() ? current()->fileName() : L"";
}

std::vector<std::wstring> drawingNotes()
{
    std::vector<std::wstring> notes;
    if (current()) {
        for (const std::string& note : current()->database()->state().notes)
            notes.push_back(fromUtf8(note));
    }
    return notes;
}

AcDbDatabase* drawingDatabase()
{
    return current() ? current()->database() : nullptr;
}

drawing::Document& document()
{
    return current()->database()->state().document;
}

} // namespace standin
