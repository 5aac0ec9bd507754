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

OpenDocument* active()
{
    return documentManager().active();
}

void add(std::unique_ptr<AcDbDatabase> database)
{
    documentManager().add(std::move(database));
    dynamicLinker().send(AcRx::kLoadDwgMsg);
    if (deskServices())
        deskServices()->redraw();
}

bool modified(const OpenDocument* document)
{
    return document && document->database()->state().changes.any();
}

std::filesystem::path pathOf(const OpenDocument* document)
{
    return document ? document->fileName() : L"";
}

} // namespace

std::vector<DrawingId> openDrawings()
{
    std::vector<DrawingId> ids;
    for (const auto& document : documentManager().documents())
        ids.push_back(document->id());
    return ids;
}

DrawingId activeDrawing()
{
    return active() ? active()->id() : 0;
}

bool activateDrawing(DrawingId drawing)
{
    OpenDocument* document = documentManager().find(drawing);
    if (document)
        documentManager().activate(*document);
    return document != nullptr;
}

Failure addDrawing(const std::filesystem::path& path)
{
    if (path.empty()) {
        add(std::make_unique<AcDbDatabase>());
        return std::nullopt;
    }
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
    database->state().form = drawing::formOfFile(file);
    add(std::move(database));
    return std::nullopt;
}

Failure newDrawing()
{
    return openDrawing({});
}

Failure openDrawing(const std::filesystem::path& path)
{
    closeDrawing();
    return addDrawing(path);
}

Failure saveDrawing(const std::filesystem::path& path, SaveForm savedForm)
{
    if (!active())
        return L"No drawing is open.";
    std::error_code error;
    const std::wstring name = std::filesystem::absolute(path, error).wstring();
    AcDbDatabase* database = active()->database();
    const drawing::DrawingForm form =
        savedForm == SaveForm::OfFile ? database->state().form : drawing::formOfExtension(name);
    editor().tell([&](AcEditorReactor& reactor) { reactor.beginSave(database, name.c_str()); });
    try {
        drawing::writeDrawing(database->state().document, name, form, &database->state().notes);
    } catch (const drawing::DrawingError& failure) {
        editor().tell([&](AcEditorReactor& reactor) { reactor.abortSave(database); });
        return fromUtf8(failure.what());
    }
    database->state().fileName = name;
    database->state().form = form;
    database->state().changes.clear();
    editor().tell([&](AcEditorReactor& reactor) { reactor.saveComplete(database, name.c_str()); });
    return std::nullopt;
}

void closeDrawing()
{
    OpenDocument* document = active();
    if (!document)
        return;
    dynamicLinker().send(AcRx::kUnloadDwgMsg);
    document->destroyDatabase();
    if (!document->locks.empty()) {
        recordBreach("The drawing was closed with " + std::to_string(document->locks.size()) +
                     " document locks that nobody gave back.");
    }
    documentManager().removeActive();
    dynamicLinker().forgetLocks();
}

bool drawingOpen()
{
    return active() != nullptr;
}

bool drawingModified()
{
    return modified(active());
}

bool drawingModified(DrawingId drawing)
{
    return modified(documentManager().find(drawing));
}

std::filesystem::path drawingPath()
{
    return pathOf(active());
}

std::filesystem::path drawingPath(DrawingId drawing)
{
    return pathOf(documentManager().find(drawing));
}

std::vector<std::wstring> drawingNotes()
{
    std::vector<std::wstring> notes;
    if (active()) {
        for (const std::string& note : active()->database()->state().notes)
            notes.push_back(fromUtf8(note));
    }
    return notes;
}

AcDbDatabase* drawingDatabase()
{
    return active() ? active()->database() : nullptr;
}

drawing::Document& document()
{
    return active()->database()->state().document;
}

} // namespace standin
