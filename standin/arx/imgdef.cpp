#include "standin/arx/imgdef.h"

#include <algorithm>
#include <filesystem>

#include "standin/arx/desk_services.h"
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
    std::unique_ptr<Atil::Image> image;
    std::shared_ptr<const imaging::Bitmap>
        pixelsAtOpening;      // held while the image is open, so that writing makes new ones
    std::wstring refusedFile; // could not be read for painting, in the state that it had then
    std::filesystem::file_time_type refusedTime;
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

AcDbRasterImageDef::AcDbRasterImageDef() : m_state(std::make_unique<State>()) {}

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
    record().path = standin::toUtf8(path);
    m_state->chosenFile.clear();
    if (!m_state->image)
        m_state->info.reset();
    setModified();
    return Acad::eOk;
}

const ACHAR* AcDbRasterImageDef::activeFileName() const
{
    assertReadEnabled("activeFileName");
    if (m_state->image) {
        m_state->activeText = m_state->loadedFile;
    } else if (!m_state->chosenFile.empty()) {
        m_state->activeText = standin::findImageFile(m_state->chosenFile, drawingFileOf(*this));
    } else {
        m_state->activeText = standin::findImageFile(standin::fromUtf8(record().path), drawingFileOf(*this));
    }
    return m_state->activeText.c_str();
}

Acad::ErrorStatus AcDbRasterImageDef::setActiveFileName(const ACHAR* path)
{
    if (!path)
        return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled("setActiveFileName");
    if (status != Acad::eOk)
        return status;
    m_state->chosenFile = path;
    if (!m_state->image)
        m_state->info.reset();
    return Acad::eOk;
}

bool AcDbRasterImageDef::isLoaded() const
{
    assertReadEnabled("isLoaded");
    return m_state->image != nullptr;
}

Acad::ErrorStatus AcDbRasterImageDef::load()
{
    const Acad::ErrorStatus status = assertReadEnabled("load");
    if (status != Acad::eOk || m_state->image)
        return status;
    const std::wstring file = activeFileName();
    if (file.empty())
        return Acad::eFileNotFound;
    auto loaded = standin::loadImageFile(file);
    if (!loaded)
        return Acad::eFileAccessErr;
    m_state->image = std::move(loaded->image);
    m_state->info = loaded->info;
    m_state->loadedFile = file;
    m_state->imageModified = false;
    record().loaded = true;
    takeSize();
    setModified();
    return Acad::eOk;
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
    if (modifyDatabase)
        record().loaded = false;
    setModified();
    return Acad::eOk;
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
    if (forceLoad && !m_state->image)
        const_cast<AcDbRasterImageDef*>(this)->load();
    return m_state->image ? new Atil::Image(*m_state->image) : nullptr;
}

Acad::ErrorStatus AcDbRasterImageDef::openImage(Atil::Image*& image)
{
    image = nullptr;
    const Acad::ErrorStatus status = assertWriteEnabled("openImage");
    if (status != Acad::eOk)
        return status;
    if (!m_state->image)
        return Acad::eNotApplicable;
    if (m_state->imageOpen) {
        standin::recordBreach("An image was opened twice.");
        return Acad::eWasOpenForWrite;
    }
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
        takeSize();
        setModified();
    }
    m_state->pixelsAtOpening.reset();
    return Acad::eOk;
}

bool AcDbRasterImageDef::imageModified() const
{
    return m_state->imageModified;
}

void AcDbRasterImageDef::setImageModified(bool value)
{
    m_state->imageModified = value;
}

std::shared_ptr<const imaging::Bitmap> AcDbRasterImageDef::pixels() const
{
    return m_state->image ? m_state->image->pixels() : nullptr;
}

std::shared_ptr<const imaging::Bitmap> AcDbRasterImageDef::pixelsForPainting()
{
    if (!m_state->image && record().loaded && objectId().slot()) {
        standin::withWriteOpen(*objectId().slot(), [this] {
            const std::wstring file = activeFileName();
            std::error_code error;
            const auto written = std::filesystem::last_write_time(file, error);
            if (error || (file == m_state->refusedFile && written == m_state->refusedTime))
                return;
            if (load() != Acad::eOk) {
                m_state->refusedFile = file;
                m_state->refusedTime = written;
            }
        });
    }
    return pixels();
}

// What the file's header says; known from the loading, or looked up.
const imaging::RasterInfo* AcDbRasterImageDef::fileInfo() const
{
    if (!m_state->info) {
        const std::wstring file = activeFileName();
        if (!file.empty())
            m_state->info = standin::inspectImageFile(file);
    }
    return m_state->info ? &*m_state->info : nullptr;
}

// The drawing's records follow the number of pixels; the size of one pixel in the drawing stays.
void AcDbRasterImageDef::takeSize()
{
    const Atil::Size size = m_state->image->size();
    const drawing::Vector2 pixels{double(size.width), double(size.height)};
    drawing::ImageDefinition& definition = record();
    definition.pixels = pixels;
    definition.pixelSize = {standin::millimetresPerPixel(m_state->info->resolution.x, m_state->info->size.width),
                            standin::millimetresPerPixel(m_state->info->resolution.y, m_state->info->size.width)};
    if (objectId().database())
        standin::resizeImageEntities(*objectId().database(), objectId().handle(), pixels);
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
