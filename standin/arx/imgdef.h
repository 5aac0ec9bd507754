// Image definitions: the raster file behind the images of a drawing, and its pixels while they are loaded.
#pragma once

#include <memory>

#include "standin/arx/dbobject.h"
#include "standin/arx/gevec3d.h"

namespace Atil {
class Image;
}
namespace drawing {
struct ImageDefinition;
struct Vector2;
} // namespace drawing
namespace imaging {
class Bitmap;
struct RasterInfo;
} // namespace imaging

namespace standin {
enum class Keep;
}

class AcDbRasterImageDef;

class HALVORAN_STANDIN_API AcDbRasterImageDefTransReactor : public AcDbObjectReactor
{
    ACRX_DECLARE_MEMBERS(AcDbRasterImageDefTransReactor);

    /// The definition is about to let go of its image: by an unload, an erasure or the closing of the drawing. The
    /// definition is open for write. The result is not looked at. A reactor may remove and delete itself here.
    virtual Adesk::Boolean onDeleteImage(const AcDbRasterImageDef* definition, const Atil::Image* image) = 0;
};

class HALVORAN_STANDIN_API AcDbRasterImageDef : public AcDbObject
{
    ACRX_DECLARE_MEMBERS(AcDbRasterImageDef);

    AcDbRasterImageDef();
    ~AcDbRasterImageDef() override;

    /// The dictionary of the drawing's definitions; null if it has none.
    static AcDbObjectId imageDictionary(AcDbDatabase* database);
    /// eOk with the dictionary, which is made if there is none.
    static Acad::ErrorStatus createImageDictionary(AcDbDatabase* database, AcDbObjectId& id);

    /// The name as the drawing stores it; strings stay valid until the next change.
    const ACHAR* sourceFileName() const;
    /// A loaded image is not touched; eInvalidInput for a null name.
    Acad::ErrorStatus setSourceFileName(const ACHAR* path);
    /// The file that the image comes from: the full path, or empty if no file was found.
    const ACHAR* activeFileName() const;
    /// Where to load from in place of the source; a loaded image is not touched, only its name changes.
    Acad::ErrorStatus setActiveFileName(const ACHAR* path);

    /// Whether the drawing says so and the file can be read. The pixels themselves are read when somebody asks for
    /// them.
    bool isLoaded() const;
    /// Reads the file by its content, and the drawing remembers that the definition is loaded. eFileNotFound, or
    /// eFileAccessErr if it is no raster file that can be read. An image that was read before stays as it is.
    Acad::ErrorStatus load();
    /// Drops the image, after its reactors have been told. With the flag the drawing remembers that it is unloaded,
    /// without it the definition is unloaded until the next load.
    Acad::ErrorStatus unload(bool modifyDatabase = true);

    /// In pixels: of a loaded definition those of its image, else those that the drawing knows.
    AcGeVector2d size() const;
    /// Millimetres per pixel; 1 / width if the file knows no resolution.
    AcGeVector2d resolutionMMPerPixel() const;
    /// Bits per pixel of the file: 1, 8, 24 or 32; 1 if the file is missing.
    int colorDepth() const;

    /// A new image that the caller deletes, sharing its pixels with the definition's until either is written; loads the
    /// definition first if asked. Null if it is not loaded.
    Atil::Image* imageCopy(bool forceLoad = false) const;
    /// The definition's own image, for writing, until closeImage. eNotApplicable if it is not loaded, eWasOpenForWrite
    /// if it is open already.
    Acad::ErrorStatus openImage(Atil::Image*& image);
    Acad::ErrorStatus closeImage();

    /// Whether the pixels differ from the file's: true from a closeImage after which they are others, until the image
    /// goes or setImageModified says otherwise.
    virtual bool imageModified() const;
    /// Needs the definition open for write.
    virtual void setImageModified(bool value);

    /// For the stand-in's own use. The pixels that have been read, or null.
    std::shared_ptr<const imaging::Bitmap> pixels() const;
    /// The same, read first if the definition is loaded. A file that could not be read is tried again only after the
    /// name or the file has changed.
    std::shared_ptr<const imaging::Bitmap> pixelsForPainting();
    /// The image itself, if it has been read, or null.
    const Atil::Image* loadedImage() const;
    /// Another image in the place of the present one, whose pixels it shares; it counts as modified unless its pixels
    /// are those that were read from the file. One that is not loaded is loaded first. Needs the definition open for
    /// write. False if the image is in use or the file can't be read.
    bool putImage(const Atil::Image& image);
    /// Lets go of the image as the drawing closes.
    void releaseImage();
    /// Gives the records the number of pixels that the file of a loaded definition has; the pictures keep their edges.
    void followFile();

protected:
    void subErase(Adesk::Boolean erasing) override;

private:
    struct State;

    drawing::ImageDefinition& record() const;
    std::wstring file() const;
    bool refused(const std::wstring& file) const;
    bool awaitsReading() const;
    Acad::ErrorStatus read();
    void readIfAwaited();
    const imaging::RasterInfo* fileInfo() const;
    void setLoaded(bool loaded);
    void takeFileSize();
    void takeImageSize();
    void takeSize(const drawing::Vector2& pixels, standin::Keep keep);

    std::unique_ptr<State> m_state;
};
