#pragma once

#include <initializer_list>
#include <memory>
#include <optional>

#include "module/raster/CRasterObjects.h"
#include "platform/platform.h"

class CPenList;
class CTempFile;
class WorkerMessage;

/// What the worker says of the formats that a raster can be saved in.
struct RasterFormats
{
    CString filter;       // for the file dialog, in the class library's form with |; empty if the worker did not answer
    int filterIndex = -1; // zero-based, of the raster's own format
};

/// One raster image of the drawing: the entity, its definition, a working copy of the pixels, and the current region
/// (the selection).
///
/// A first Lock opens the entity and the definition and copies the pixels into the working image, where all edits
/// happen; nested locks are only counted. Reload carries the working image into the drawing; what was not reloaded
/// before the last Unlock is lost. While the count is above zero the objects are open and the working image is valid,
/// except between Suspend(true) and Suspend(false).
///
/// Pixels are whole numbers, origin at the image's top left corner, y down. The region lies in that space, right and
/// bottom exclusive, and is the image's rectangle when nothing is selected.
class CAcraster
{
public:
    /// Opens the image and leaves it locked once; Unlock it unless it is to be used at once. Of one that can't be
    /// opened HasImage is false, and nothing else may be asked.
    explicit CAcraster(const ads_name entityName);
    /// Wraps what the caller has open, and keeps nothing open itself: Lock and Unlock do nothing, and the lock count is
    /// -1. Both stay the caller's and must outlive the object.
    CAcraster(AcDbRasterImageDef* definition, Atil::Image* image);
    virtual ~CAcraster();
    CAcraster(const CAcraster&) = delete;
    CAcraster& operator=(const CAcraster&) = delete;

    // Locks and the way into the drawing.

    /// False if the image could not be opened at the construction.
    bool HasImage() const { return m_life != Life::Failed; }
    /// For write if `write` is not 0, else for read. 0 if the image has gone; the raster is then of no more use.
    int Lock(int write);
    /// Whether it wraps what somebody else has open, and who may be about to let it go.
    bool IsBorrowed() const { return m_life == Life::Borrowed; }
    /// The count that is left.
    int Unlock();
    /// Nested locks; -1 of an object that does not manage what it holds, or holds nothing.
    int GetLockCount() const { return m_life == Life::Managed ? m_nLockCount : -1; }
    /// Closes the objects for a host call (`close`) and reopens them for write; the working image stays.
    void Suspend(bool close);
    /// Commits the working image. The caller holds a lock, which stays as it is. The module has no way back. With
    /// `attachReactor` the definition gets a reactor that asks before the edited image goes, unless it has one.
    void Reload(bool attachReactor);
    /// Makes an image that this object had to load stay loaded when the object goes.
    void KeepLoaded();
    /// Gives up the working image without freeing it.
    void ForgetImage() { m_pImage = nullptr; }

    // Questions.

    /// False of an image that could not be opened again after a Suspend: then no more than this may be asked.
    bool IsOpen() const { return m_objects.m_pDefinition != nullptr; }
    /// Of the definition while it is open, else null.
    AcDbObjectId GetDefinitionId() const { return IsOpen() ? m_objects.m_pDefinition->objectId() : AcDbObjectId(); }
    /// Whether the image lies in a drawing that is open but is not the one that the user works on.
    bool IsInOtherDrawing() const;
    /// Another number for every object: tells a raster from a later one that lies at the same address.
    unsigned GetSerial() const { return m_nSerial; }
    CSize GetSize() const; // 0 by 0 of an image that has gone under its lock
    CRect GetImageRect() const { return CRect(CPoint(0, 0), GetSize()); }
    CRgn& GetRegion() { return *m_pRegion; }
    CRect GetRegionBox() const;
    void ResetRegion();
    /// Whether the region is anything but the whole image.
    bool HasSelection() const;
    /// Whether there is a selection, and anything of it lies in the image.
    bool HasSelectedPixels() const;
    /// The full path of the raster's file, or "File not found".
    CString GetFileName() const;
    /// Dots per inch.
    int GetDpi() const { return m_nDpi; }
    void GetEntityName(ads_name& name) const;
    /// Bits per pixel of the raster's file.
    int GetColorDepth() const;
    /// The number of colours to choose from: 2 for a bitonal image, else 0.
    int GetImageKind() const;
    /// Lower left corner and size of the image in the drawing, in drawing units.
    void GetPlacement(AcGePoint3d& origin, double& width, double& height) const;
    bool IsDirty() const { return m_bDirty; }
    bool IsShown() const { return m_objects.m_bShown; }
    bool IsTransparent() const { return m_objects.m_bTransparent; }
    void SetShown(bool shown);
    void SetTransparent(bool transparent);

    // The colour to paint in: the flag is 1 for background (white) and 0 for ink (black).

    static COLORREF ColorFromFlag(BYTE flag) { return flag ? 0xFFFFFF : 0; }
    BYTE GetColorFlag() const { return m_nColorFlag; }
    /// The old flag.
    BYTE SetColorFlag(BYTE flag);
    void SetColor(COLORREF color) { m_nColorFlag = color == 0xFFFFFF; }
    /// Side of the square stamp in pixels; returns the old one.
    int SetStampSize(int size);

    // Coordinates. They use the matrix that was read at the last opening, so the caller holds a lock.

    /// The drawing point of a pixel's top left corner.
    AcGePoint3d PixelToWorld(CPoint pixel) const;
    /// In the host's own pixel coordinates, where whole numbers lie at the centres of the pixels.
    AcGePoint3d PixelToWorld(double x, double y) const;
    CPoint WorldToPixel(const AcGePoint3d& point) const;
    CPoint PixelToView(CPoint pixel) const;
    CPoint ViewToPixel(CPoint point) const;
    /// Of two corners, put in order: a turned or mirrored image converts them in any.
    CRect PixelToView(const CRect& pixels) const;
    CRect ViewToPixel(const CRect& rect) const;
    /// The box of all four corners, which lie apart from each other where the image is turned by any angle.
    CRect BoundsInView(const CRect& pixels) const;
    CRect BoundsInPixels(const CRect& rect) const;
    /// The image's frame in view space.
    CRect GetViewRect() const;
    /// Attaches the region in view space to `viewRegion`, which must be empty handed; rectangles that lie wholly
    /// outside the view are left out. Returns the number of rectangles of the region itself.
    int GetViewRegion(CRgn& viewRegion) const;

    // Painting and turning in memory. The caller holds a lock, and calls Reload in the end.

    /// Paints the square of the stamp size in the present colour; of an even size it lies half a pixel to the upper
    /// left.
    void Stamp(CPoint point);
    /// Paints the region in the present colour.
    void FillRegion();
    void FlipHorizontal();
    void FlipVertical();
    /// A quarter turn, clockwise as seen, or the other way.
    void Turn(bool clockwise);
    /// The size with the image's proportions that fits into `pixelSize` and has one side with it in common.
    CSize KeepProportions(CSize pixelSize) const;
    /// To the size of KeepProportions, and to a new resolution, which the image's size in the drawing follows.
    void Resample(CSize pixelSize, int dpi);
    /// The working image as a TIFF file with the raster's resolution. False, with no file there, if it was not written.
    bool WriteTiff(const CString& path) const;

    // Requests to the worker. A request that fails leaves the image as it was and says nothing. One whose reply can't
    // be read back has failed.

    /// Puts the region's pixels on the clipboard, as a device-independent bitmap. False if they did not come there.
    bool CopyToClipboard();
    /// Lays the clipboard's bitmap down with its top left corner at a pixel; only its ink if `transparent` is set.
    void PasteFromClipboard(CPoint position, bool transparent);
    void Invert();
    /// `angle` in radians from +x towards +y, about the pixel `pivot`; what lies outside the selection stays if
    /// `selectionOnly` is set.
    void Rotate(double angle, CPoint pivot, bool selectionOnly, bool transparent);
    /// Removes specks (`mode` FilterDespeckle) or fills holes (FilterFill) up to `size` tenths of a millimetre.
    void Filter(DWORD mode, DWORD size, bool selectionOnly);
    /// Cuts the image down to the box of what the selection has of it, and moves the entity, so that what is kept stays
    /// where it was. A selection beside the image changes nothing.
    void Crop();
    /// Burns entities of the drawing into the image, within the region, each colour with its own pen. Says so if none
    /// of them lies over it. False if nothing was changed.
    bool Rasterize(const AcDbObjectIdArray& entities, CPenList& pens);

    // Saving.

    /// The formats that the raster's file could be saved in.
    RasterFormats QueryFormats() const;
    /// The worker's number of the format in that place of the filter; nothing if it did not answer.
    std::optional<DWORD> QueryFormatCode(int filterIndex) const;
    /// Writes the raster, or what `region` has of it, to a file; onto the raster's own file too, from which the drawing
    /// then loads the image anew. On failure the file and the edited image are as they were, and the command line says
    /// why; where one of them can't stay in its place, it says where that lies.
    bool SaveAs(const CString& path, DWORD formatCode, CRgn* region);
    /// Writes the image to a file in the temporary folder that stays there, and says where it lies.
    void KeepInFile() const;

private:
    enum class Life
    {
        Managed,  // opens and closes the drawing's objects with its locks
        Borrowed, // wraps what somebody else has open
        Failed,   // the image could not be opened
    };

    void DeleteImage();
    void TakeWorkingImage();
    void UnloadAfterUse();
    CRect ClipToImage(const CRect& rect) const;
    bool ClipToImage(CRgn& region, CRgn& clipped) const;
    void ReplaceImage(int rotation);
    bool RewriteByWorker(WorkerMessage& message, std::initializer_list<CString*> fileFields);
    bool ReadBack(const CString& path);
    bool WriteTiffFile(const CString& path) const;
    bool ExportEntities(const AcDbObjectIdArray& entities, const CString& path);
    bool IsOwnFile(const CString& path) const;
    bool SaveFrom(CTempFile& source, const CString& path, DWORD formatCode, CRgn* region);
    bool SendSave(const CString& source, const CString& target, DWORD formatCode, CRgn* region) const;
    bool SaveOntoOwnFile(CTempFile& source, const CString& path, DWORD formatCode, CRgn* region);
    void LetGoOfFile();
    std::unique_ptr<Atil::Image> Load();
    std::unique_ptr<Atil::Image> LoadFrom(const CString& file, const CString& name);
    void ShowEditedImage(CTempFile& source, const CString& name);

    const unsigned m_nSerial;
    Life m_life = Life::Failed;
    CRasterObjects m_objects;        // open while the lock count is above 0
    Atil::Image* m_pImage = nullptr; // working image; owned by a managed raster, valid while the lock count is above 0
    std::unique_ptr<CRgn> m_pRegion;
    int m_nLockCount = 0;
    CSize m_lastSize{0, 0}; // at the last unlock
    BYTE m_nColorFlag = 0;
    int m_nStampSize = 1;
    bool m_bDirty = false; // the working image was changed in memory since it was taken or committed
    int m_nDpi = 0;
    bool m_bLoadedHere = false; // the image was not loaded before, and is to be unloaded again
};
