#include "standin/arx/imgdef.h"

#include <algorithm>
#include <filesystem>

#include "standin/arx/desk_services.h"
#include "standin/arx/edit_log.h"
#include "standin/arx/image_entities.h"
#include "standin/arx/image_file.h"
#include "standin/arx/object_store.h"
#include "standin/arx/rx_define.h"
#include "standin/arx/strictness.h"
#include "standin/arx/text.h"

ACRX_DEFINE_MEMBERS(AcDbRasterImageDefTransReactor, AcDbObjectReactor)
ACRX_DEFINE_MEMBERS(AcDbRasterImageDef, AcDbObject)

struct AcDbRasterImageDef::State
{
    drawing::ImageDefinition alone; // the record of a definition that is in no database
    std::wstring sourceText;        // keeps what sourceFileName returned
    std::wstring activeText;        // keeps what activeFileName returned
    std::wstring chosenFile;        // setActiveFileName
    std::wstring loadedFile;        // where the image came from
    std::optional<imaging::RasterInfo> info;
    std::optional<imaging::Size> sizeInFile; // that the records followed last, whatever was committed since
    std::unique_ptr<Atil::Image> image;
    std::weak_ptr<const imaging::Bitmap> pixelsOfFile; // as they were read last, while anybody has them still
    std::shared_ptr<const imaging::Bitmap>
        pixelsAtOpening;      // held while the image is open, so that writing makes new ones
    std::wstring refusedFile; // could not be read, in the state that it had then
    std::filesystem::file_time_type refusedTime;
    bool unloadedForNow = false; // whatever the record says
    bool imageOpen = false;
    bool imageModified = false;
    std::vector<std::string> names; // in the image dictionary, while the definition is erased
};

namespace {

std::wstring drawingFileOf(const AcDbObject& object)
{
    const AcDbDatabase* database = object.database();
    return database ? database->state().fileName : std::wstring();
}

} // namespace

AcDbRasterImageDef::AcDbRasterImageDef() : m_state(std::make_unique<State>())
{
    m_state->alone.loaded = false;
}

AcDbRasterImageDef::~AcDbRasterImageDef()
{
    if (m_state->imageOpen)
        standin::recordBreach("An image definition went while its image was open.");
}

drawing::ImageDefinition& AcDbRasterImageDef::record() const
{
    auto* record = standin::recordOf<drawing::ImageDefinition>(objectId());
    return record ? *record : m_state->alone;
}

const ACHAR* AcDbRasterImageDef::sourceFileName() const
{
    assertReadEnabled("sourceFileName");
    m_state->sourceText = standin::fromUtf8(record().path);
    return m_state->sourceText.c_str();
}

Acad::ErrorStatus AcDbRasterImageDef::setSourceFileName(const ACHAR* path)
{
    if (!path)
        return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled("setSourceFileName");
    if (status != Acad::eOk)
        return status;
    m_state->chosenFile.clear();
    if (!m_state->image)
        m_state->info.reset();
    std::string stored = standin::toUtf8(path);
    if (record().path != stored) {
        record().path = std::move(stored);
        setModified();
    }
    return Acad::eOk;
}

const ACHAR* AcDbRasterImageDef::activeFileName() const
{
    assertReadEnabled("activeFileName");
    m_state->activeText = file();
    return m_state->activeText.c_str();
}

std::wstring AcDbRasterImageDef::file() const
{
    if (m_state->image)
        return m_state->loadedFile;
    const std::wstring name = m_state->chosenFile.empty() ? standin::fromUtf8(record().path) : m_state->chosenFile;
    return standin::findImageFile(name, drawingFileOf(*this));
}

Acad::ErrorStatus AcDbRasterImageDef::setActiveFileName(const ACHAR* path)
{
    if (!path)
        return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled("setActiveFileName");
    if (status != Acad::eOk)
        return status;
    m_state->chosenFile = path;
    if (m_state->image) {
        m_state->loadedFile = path; // a loaded image goes on under the new name
    } else {
        m_state->info.reset();
    }
    return Acad::eOk;
}

bool AcDbRasterImageDef::isLoaded() const
{
    assertReadEnabled("isLoaded");
    return m_state->image || awaitsReading();
}

// Loaded by the record, its pixels not asked for yet.
bool AcDbRasterImageDef::awaitsReading() const
{
    if (m_state->image || m_state->unloadedForNow || !record().loaded)
        return false;
    const std::wstring present = file();
    return !present.empty() && !refused(present);
}

bool AcDbRasterImageDef::refused(const std::wstring& file) const
{
    std::error_code error;
    return file == m_state->refusedFile && std::filesystem::last_write_time(file, error) == m_state->refusedTime;
}

Acad::ErrorStatus AcDbRasterImageDef::read()
{
    const std::wstring source = file();
    if (source.empty())
        return Acad::eFileNotFound;
    std::error_code error;
    const auto written = std::filesystem::last_write_time(source, error);
    auto loaded = standin::loadImageFile(source);
    if (!loaded) {
        m_state->refusedFile = source;
        m_state->refusedTime = written;
        return Acad::eFileAccessErr;
    }
    m_state->image = std::move(loaded->image);
    m_state->pixelsOfFile = m_state->image->pixels();
    m_state->info = loaded->info;
    m_state->loadedFile = source;
    m_state->imageModified = false;
    takeFileSize();
    return Acad::eOk;
}

void AcDbRasterImageDef::readIfAwaited()
{
    if (awaitsReading())
        read();
}

Acad::ErrorStatus AcDbRasterImageDef::load()
{
    Acad::ErrorStatus status = assertReadEnabled("load");
    if (status == Acad::eOk && !m_state->image)
        status = read();
    if (status == Acad::eOk)
        setLoaded(true);
    return status;
}

Acad::ErrorStatus AcDbRasterImageDef::unload(bool modifyDatabase)
{
    const Acad::ErrorStatus status = modifyDatabase ? assertWriteEnabled("unload") : assertReadEnabled("unload");
    if (status != Acad::eOk)
        return status;
    if (m_state->imageOpen) {
        standin::recordBreach("An image was unloaded while it was open.");
        return Acad::eWasOpenForWrite;
    }
    releaseImage();
    if (modifyDatabase) {
        setLoaded(false);
    } else if (!m_state->unloadedForNow) {
        m_state->unloadedForNow = true;
        setShownAnew();
    }
    return Acad::eOk;
}

// Loading and unloading again leaves the drawing as it was, so the database notes how often the record turned.
void AcDbRasterImageDef::setLoaded(bool loaded)
{
    const bool turned = record().loaded != loaded;
    if (turned) {
        record().loaded = loaded;
        if (database())
            database()->state().changes.turn(objectId().handle());
    }
    if (turned || m_state->unloadedForNow)
        setShownAnew();
    m_state->unloadedForNow = false;
}

// The reactors get a copy, which shares the pixels, as one of them may load or unload the definition itself.
void AcDbRasterImageDef::releaseImage()
{
    if (!m_state->image)
        return;
    const Atil::Image image = *m_state->image;
    const std::vector<AcDbObjectReactor*> present = reactors();
    for (AcDbObjectReactor* reactor : present) {
        if (!m_state->image)
            return;
        const bool still = std::find(reactors().begin(), reactors().end(), reactor) != reactors().end();
        auto* watcher = still ? dynamic_cast<AcDbRasterImageDefTransReactor*>(reactor) : nullptr;
        if (watcher)
            watcher->onDeleteImage(this, &image);
    }
    m_state->image.reset();
    m_state->imageModified = false;
    m_state->loadedFile.clear();
    m_state->info.reset();
}

AcGeVector2d AcDbRasterImageDef::size() const
{
    assertReadEnabled("size");
    if (m_state->image) {
        const Atil::Size size = m_state->image->size();
        return {double(size.width), double(size.height)};
    }
    const_cast<AcDbRasterImageDef*>(this)->followFile();
    const drawing::Vector2 stored = record().pixels;
    if (stored.x > 0 && stored.y > 0)
        return {stored.x, stored.y};
    const imaging::RasterInfo* info = fileInfo();
    return info ? AcGeVector2d(info->size.width, info->size.height) : AcGeVector2d();
}

AcGeVector2d AcDbRasterImageDef::resolutionMMPerPixel() const
{
    assertReadEnabled("resolutionMMPerPixel");
    const imaging::RasterInfo* info = fileInfo();
    if (!info)
        return {};
    return {standin::millimetresPerPixel(info->resolution.x, info->size.width),
            standin::millimetresPerPixel(info->resolution.y, info->size.width)};
}

int AcDbRasterImageDef::colorDepth() const
{
    assertReadEnabled("colorDepth");
    const imaging::RasterInfo* info = fileInfo();
    return info ? standin::reportedDepth(info->bitsPerPixel) : 1;
}

Atil::Image* AcDbRasterImageDef::imageCopy(bool forceLoad) const
{
    if (assertReadEnabled("imageCopy") != Acad::eOk)
        return nullptr;
    auto* self = const_cast<AcDbRasterImageDef*>(this);
    if (forceLoad) {
        self->load();
    } else {
        self->readIfAwaited();
    }
    return m_state->image ? new Atil::Image(*m_state->image) : nullptr;
}

Acad::ErrorStatus AcDbRasterImageDef::openImage(Atil::Image*& image)
{
    image = nullptr;
    const Acad::ErrorStatus status = assertWriteEnabled("openImage");
    if (status != Acad::eOk)
        return status;
    readIfAwaited();
    if (!m_state->image)
        return Acad::eNotApplicable;
    if (m_state->imageOpen) {
        standin::recordBreach("An image was opened twice.");
        return Acad::eWasOpenForWrite;
    }
    standin::noteRasterChange(database(), objectId().handle());
    m_state->imageOpen = true;
    m_state->pixelsAtOpening = m_state->image->pixels();
    image = m_state->image.get();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRasterImageDef::closeImage()
{
    if (!m_state->imageOpen) {
        standin::recordBreach("An image was closed that was not open.");
        return Acad::eNotOpenForWrite;
    }
    m_state->imageOpen = false;
    if (m_state->image->pixels() != m_state->pixelsAtOpening) {
        m_state->imageModified = true;
        takeImageSize();
        setModified();
    }
    m_state->pixelsAtOpening.reset();
    return Acad::eOk;
}

bool AcDbRasterImageDef::imageModified() const
{
    assertReadEnabled("imageModified");
    return m_state->imageModified;
}

void AcDbRasterImageDef::setImageModified(bool value)
{
    if (assertWriteEnabled("setImageModified") == Acad::eOk)
        m_state->imageModified = value;
}

const Atil::Image* AcDbRasterImageDef::loadedImage() const
{
    return m_state->image.get();
}

bool AcDbRasterImageDef::putImage(const Atil::Image& image)
{
    const bool ready = assertWriteEnabled("putImage") == Acad::eOk && !m_state->imageOpen;
    if (!ready || load() != Acad::eOk)
        return false;
    *m_state->image = image;
    m_state->imageModified = image.pixels() != m_state->pixelsOfFile.lock();
    setModified();
    return true;
}

std::shared_ptr<const imaging::Bitmap> AcDbRasterImageDef::pixels() const
{
    return m_state->image ? m_state->image->pixels() : nullptr;
}

std::shared_ptr<const imaging::Bitmap> AcDbRasterImageDef::pixelsForPainting()
{
    readIfAwaited();
    return pixels();
}

// What the file's header says; known from the reading, or looked up.
const imaging::RasterInfo* AcDbRasterImageDef::fileInfo() const
{
    if (!m_state->info) {
        const std::wstring source = file();
        if (!source.empty())
            m_state->info = standin::inspectImageFile(source);
    }
    return m_state->info ? &*m_state->info : nullptr;
}

void AcDbRasterImageDef::followFile()
{
    if (!m_state->info && awaitsReading() && fileInfo())
        takeFileSize();
}

// A file of another size than before takes the place of the picture in the drawing. One that is as the records followed
// it before only gets back the pixels that were committed and then dropped, each of the size that it had. Neither is an
// edit of the drawing's: the next opening finds the same.
void AcDbRasterImageDef::takeFileSize()
{
    const imaging::Size size = m_state->info->size;
    const standin::Keep keep = m_state->sizeInFile == size ? standin::Keep::pixelSize : standin::Keep::edges;
    m_state->sizeInFile = size;
    takeSize({double(size.width), double(size.height)}, keep);
}

void AcDbRasterImageDef::takeImageSize()
{
    const Atil::Size size = m_state->image->size();
    takeSize({double(size.width), double(size.height)}, standin::Keep::pixelSize);
}

void AcDbRasterImageDef::takeSize(const drawing::Vector2& pixels, standin::Keep keep)
{
    drawing::ImageDefinition& definition = record();
    if (definition.pixels != pixels) {
        const imaging::RasterInfo& info = *m_state->info;
        definition.pixels = pixels;
        definition.pixelSize = {standin::millimetresPerPixel(info.resolution.x, info.size.width),
                                standin::millimetresPerPixel(info.resolution.y, info.size.width)};
    }
    if (database())
        standin::resizeImageEntities(*database(), objectId().handle(), pixels, keep);
}

void AcDbRasterImageDef::subErase(Adesk::Boolean erasing)
{
    if (erasing)
        releaseImage();
    drawing::Document& document = objectId().database()->state().document;
    const drawing::Handle handle = objectId().handle();
    if (!erasing) {
        for (const std::string& name : m_state->names)
            document.obtainImageDictionary().set(name, handle);
        m_state->names.clear();
        return;
    }
    drawing::Dictionary* dictionary = document.imageDictionary();
    if (!dictionary)
        return;
    for (const auto& entry : dictionary->entries) {
        if (entry.object == handle)
            m_state->names.push_back(entry.key);
    }
    for (const std::string& name : m_state->names)
        dictionary->erase(name);
}

AcDbObjectId AcDbRasterImageDef::imageDictionary(AcDbDatabase* database)
{
    const drawing::Dictionary* dictionary = database ? database->state().document.imageDictionary() : nullptr;
    return dictionary ? standin::idOf(*database, dictionary->handle) : AcDbObjectId();
}

Acad::ErrorStatus AcDbRasterImageDef::createImageDictionary(AcDbDatabase* database, AcDbObjectId& id)
{
    id.setNull();
    if (!database)
        return Acad::eNoDatabase;
    id = standin::idOf(*database, database->state().document.obtainImageDictionary().handle);
    return Acad::eOk;
}
