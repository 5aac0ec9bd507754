// The desk's side of the stand-in: what the desk gives to the host's API, and what it gets from it.
//
//   desk --> the functions below (open, save, close, load modules, run commands, paint)
//   desk <-- DeskServices (windows, command line, view, selection)
//
// Everything runs on the thread that called setDeskServices.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "standin/export.h"

class AcDbDatabase;
class CMDIFrameWnd;
class CView;

namespace drawing {
class Document;
}
namespace imaging {
class Bitmap;
}

namespace standin {

/// The key of an object in its drawing.
using Handle = std::uint64_t;

struct DrawingPoint
{
    double x = 0;
    double y = 0;
    double z = 0;
};

/// What the drawing view shows: its client area in pixels, the drawing point at its centre, its height in drawing
/// units.
struct ViewState
{
    int width = 0;
    int height = 0;
    DrawingPoint centre;
    double viewHeight = 1;
};

/// One argument of a command that a module has the host run.
using CommandArgument = std::variant<std::wstring, DrawingPoint, double, int>;

enum class CommandOutcome
{
    ended,
    cancelled,
    failed
};

/// The desk implements this and keeps it alive until setDeskServices(nullptr).
class HALVORAN_STANDIN_API DeskServices
{
public:
    virtual ~DeskServices() = default;

    virtual CMDIFrameWnd* frame() = 0;
    /// Null if no drawing is open.
    virtual CView* drawingView() = 0;
    /// Queues the text behind what was posted before; it is typed when the desk is next idle.
    virtual void postCommandText(const std::wstring& text) = 0;
    virtual void alert(const std::wstring& text) = 0;
    /// A line for the command line.
    virtual void print(const std::wstring& line) = 0;
    virtual ViewState viewState() = 0;
    /// What the drawing shows is another now: entities, image pixels, frames. Whether there is anything to save tells
    /// drawingModified.
    virtual void redraw() = 0;
    /// Lets the user select; nothing if he gave up. Runs its own message loop.
    virtual std::optional<std::vector<Handle>> selectEntities() = 0;
    /// What is selected now, or was selected last.
    virtual std::vector<Handle> currentSelection() = 0;
    /// Runs one of the desk's own commands at once, e.g. "_zoom", "w", and two points; false if there is no such
    /// command. The stand-in tells no reactors about it.
    virtual bool runDeskCommand(const std::vector<CommandArgument>& arguments) = 0;
};

/// Null takes the services away again; without them windows are null and nothing can be selected.
HALVORAN_STANDIN_API void setDeskServices(DeskServices* services);

// --- Drawings. Several may be open, and one of them is active: all that is said below of "the drawing", in this part
// and in those that follow, speaks of that one. Messages are in words for the user; nothing means success. ---

using Failure = std::optional<std::wstring>;
/// Of a drawing for as long as it is open, and of no other one afterwards; 0 is no drawing's.
using DrawingId = std::uint64_t;

/// In the order of their opening.
HALVORAN_STANDIN_API std::vector<DrawingId> openDrawings();
/// 0 if no drawing is open.
HALVORAN_STANDIN_API DrawingId activeDrawing();
/// Modules let go of the one that was active before by themselves. False if there is no such drawing.
HALVORAN_STANDIN_API bool activateDrawing(DrawingId drawing);
/// One more drawing, which becomes the active one; an empty path makes a new one. What can't be opened leaves
/// everything as it was.
HALVORAN_STANDIN_API Failure addDrawing(const std::filesystem::path& path);

/// Each closes the present drawing first and puts another one in its place. After a failed opening there is none in its
/// place; an empty path makes a new drawing.
HALVORAN_STANDIN_API Failure newDrawing();
HALVORAN_STANDIN_API Failure openDrawing(const std::filesystem::path& path);
/// The form of file that a drawing is saved in: that which its path's type stands for, or that of the file that it was
/// opened from or saved to last, whatever that is called.
enum class SaveForm
{
    OfPath,
    OfFile,
};
/// Announces beginSave, then saveComplete or abortSave; the drawing takes the new path.
HALVORAN_STANDIN_API Failure saveDrawing(const std::filesystem::path& path, SaveForm form = SaveForm::OfPath);
/// Modules hear kUnloadDwgMsg and the database's end; then reactors hear of the images that go. The drawing that was
/// active before becomes the active one.
HALVORAN_STANDIN_API void closeDrawing();
HALVORAN_STANDIN_API bool drawingOpen();
/// Whether there is something to save: a record was changed through the host's API, by eraseEntity, restoreEntity or
/// setSystemVariable since the drawing was opened or saved. Opening objects, reading images, and loading and unloading
/// a definition that ends as it began change nothing. What the desk edits in the document itself it has to note itself.
HALVORAN_STANDIN_API bool drawingModified();
HALVORAN_STANDIN_API bool drawingModified(DrawingId drawing);
/// Empty for a drawing that has no file yet.
HALVORAN_STANDIN_API std::filesystem::path drawingPath();
HALVORAN_STANDIN_API std::filesystem::path drawingPath(DrawingId drawing);
/// What was mended in the drawing's file when it was opened, or left out of it when it was saved last: plain sentences,
/// as a rule none.
HALVORAN_STANDIN_API std::vector<std::wstring> drawingNotes();
/// The current drawing's database and its document; the document is only there while a drawing is open. An edit to the
/// document is painted after redraw(), and must not remove an entity: see eraseEntity.
HALVORAN_STANDIN_API AcDbDatabase* drawingDatabase();
HALVORAN_STANDIN_API drawing::Document& document();

/// Whether an edit heeds the lock of the entity's layer; taking back an edit does not.
enum class LayerLock
{
    heeded,
    overridden
};

/// Edits that reactors and open objects have to know of. False if there is no such object, it is open, or its layer is
/// locked.
HALVORAN_STANDIN_API bool eraseEntity(Handle entity, LayerLock lock = LayerLock::heeded);
HALVORAN_STANDIN_API bool restoreEntity(Handle entity);
HALVORAN_STANDIN_API bool entityErased(Handle entity);

// --- Taking back: what was changed through the host's API, by modules or by the calls above. What the desk edits in
// the document itself it has to note itself. ---

/// How a raster was: the image of its definition, and how the image entities lie that show it. It shares its pixels
/// with the drawing, so that it costs memory only once the drawing has others.
class RasterState;

struct DrawingChange
{
    Handle object = 0;                         // the entity, or the definition of a raster
    bool added = false;                        // of an entity: it was put into the drawing, else taken out
    std::shared_ptr<const RasterState> before; // of a raster, else null
};

/// The changes since the last call: first the entities in their order, then the rasters that are others now.
HALVORAN_STANDIN_API std::vector<DrawingChange> takeChanges();
/// Null if there is no such definition.
HALVORAN_STANDIN_API std::shared_ptr<const RasterState> rasterState(Handle definition);
/// False, with everything as it is, if something of the raster is open or its image can't be loaded.
HALVORAN_STANDIN_API bool restoreRaster(const RasterState& state);

struct PixelsHeld
{
    const void* pixels = nullptr; // tells them apart; null if none are held
    std::size_t bytes = 0;
};
HALVORAN_STANDIN_API PixelsHeld pixelsHeld(const RasterState& state);

// --- Painting ---

/// The present pixels of the definition behind an image entity, which are read now if nobody asked for them before.
/// Null if it is unloaded, or the file is missing or no raster. A new pointer after every commit: compare it to know.
HALVORAN_STANDIN_API std::shared_ptr<const imaging::Bitmap> imagePixels(Handle imageEntity);
/// Whether the drawing's settings ask for frames around images.
HALVORAN_STANDIN_API bool imageFramesShown();

// --- Modules ---

/// Loads a module file, which hears kInitAppMsg and, for each open drawing, kLoadDwgMsg. A bare name is looked for
/// beside the running program. A module that is loaded already is left as it is.
HALVORAN_STANDIN_API Failure loadModule(const std::filesystem::path& file);
/// By file name, with or without folder and extension, or by the name in the application list. Refused while the module
/// is locked or answers the message with an error.
HALVORAN_STANDIN_API Failure unloadModule(const std::wstring& name);
HALVORAN_STANDIN_API std::vector<std::filesystem::path> loadedModules();
/// The modules of the application list that are to be loaded at the start; returns what went wrong, if anything.
HALVORAN_STANDIN_API std::vector<std::wstring> loadStartupModules();
/// The module files beside the running program that the application list does not know: those of a program folder that
/// was just unpacked, or moved. Returns what went wrong, if anything.
HALVORAN_STANDIN_API std::vector<std::wstring> loadUnlistedModules();
/// Keeps the application list under another key below HKEY_CURRENT_USER: for tests.
HALVORAN_STANDIN_API void setApplicationListKey(const std::wstring& key);
/// Unloads all modules, whatever they answer.
HALVORAN_STANDIN_API void unloadAllModules();

/// What modules hold at this moment, of the drawing and, as far as the stand-in sees it, of the system.
struct HeldNow
{
    int documentLocks = 0;
    int openObjects = 0;
    int selectionSets = 0;
    int timers = 0;
    int hooks = 0;
};
HALVORAN_STANDIN_API HeldNow heldNow();

// --- Commands ---

/// Whether a loaded module has the command; if none has, the module of the application list that names it is loaded.
HALVORAN_STANDIN_API bool hasModuleCommand(const std::wstring& name);
/// Runs it: commandWillStart, the handler under a document lock, commandEnded. Nothing if there is no such command.
HALVORAN_STANDIN_API std::optional<CommandOutcome> runModuleCommand(const std::wstring& name);
/// Around each of the desk's own commands: reactors hear of its start and its end, and the document is locked between.
HALVORAN_STANDIN_API void beginDeskCommand(const std::wstring& name);
HALVORAN_STANDIN_API void endDeskCommand(const std::wstring& name, CommandOutcome outcome);

// --- System variables ---

using VariableValue = std::variant<std::int16_t, double, DrawingPoint, std::wstring>;

/// Nothing if there is none of that name.
HALVORAN_STANDIN_API std::optional<VariableValue> systemVariable(const std::wstring& name);
/// False if there is none of that name, it can only be read, or the value is of another type.
HALVORAN_STANDIN_API bool setSystemVariable(const std::wstring& name, const VariableValue& value);

// --- Strictness: breaches of the host's rules by modules, as sentences; kept until cleared. ---

HALVORAN_STANDIN_API std::vector<std::string> breaches();
HALVORAN_STANDIN_API void clearBreaches();
/// Locks on any drawing that lockDocument gave and unlockDocument did not take back, commands' own left out.
HALVORAN_STANDIN_API int documentLocks();
/// Objects that are open now.
HALVORAN_STANDIN_API int openObjects();
/// Selection sets that were not freed.
HALVORAN_STANDIN_API int selectionSets();

} // namespace standin
