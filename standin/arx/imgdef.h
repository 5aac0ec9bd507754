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
}
namespace imaging {
class Bitmap;
struct RasterInfo;
} // namespace imaging

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

    bool isLoaded() const;
    /// Reads the file by its content. eFileNotFound, or eFileAccessErr if it is no raster file that can be read.
    Acad::ErrorStatus load();
    /// Drops the image, after its reactors have been told. With the flag the drawing remembers that it is unloaded.
    Acad::ErrorStatus unload(bool modifyDatabase = true);

    /// In pixels; known as soon as the file's header could be read.
    AcGeVector2d size() const;
    /// Millimetres per pixel; 1 / width if the file knows no resolution.
    AcGeVector2d resolutionMMPerPixel() const;
    /// Bits per pixel of the file: 1, 8, 24 or 32; 1 if the file is missing.
    int colorDepth() const;

    /// A new image that the caller deletes, sharing its pixels with the definition's until either is written; loads the
    /// image first if asked. Null if it is not loaded.
    Atil::Image* imageCopy(bool forceLoad = false) const;
    /// The definition's own image, for writing, until closeImage. eNotApplicable if it is not loaded, eWasOpenForWrite
    /// if it is open already.
    Acad::ErrorStatus openImage(Atil::Image*& image);
    Acad::ErrorStatus closeImage();

    /// Whether the pixels differ from the file's.
    bool imageModified() const;
    void setImageModified(bool value);

    /// For the stand-in's own use. The present pixels, or null.
    std::shared_ptr<const imaging::Bitmap> pixels() const;
    /// The same, loaded first unless the drawing says that the image is unloaded. A file that could not be read is
    /// tried again only after the name or the file has changed.
    std::shared_ptr<const imaging::Bitmap> pixelsForPainting();
    /// Lets go of the image as the drawing closes.
    void releaseImage();

protected:
    void subErase(Adesk::Boolean erasing) override;

private:
    struct State;

    drawing::ImageDefinition& record() const;
    const imaging::RasterInfo* fileInfo() const;
    void takeSize();

    std::unique_ptr<State> m_state;
};
