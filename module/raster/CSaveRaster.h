#pragma once

#include <optional>

#include "platform/platform.h"

/// Watches a definition whose image was edited: before the host deletes the image, or before the module goes, it asks
/// the user and saves the raster.
///
/// Reactors are chained from CArxApp::m_pSaveList, the newest first. Whichever of them goes empties the chain, since no
/// reactor knows the one before it; the others stay on their definitions and ask when their own image goes, but no
/// flush finds them any more. This is how the module has always behaved, and is kept.
class CSaveRaster : public AcDbRasterImageDefTransReactor
{
public:
    /// Adds itself to the definition, which is open, and to the chain. Deletes itself when the image goes.
    explicit CSaveRaster(AcDbRasterImageDef* definition);
    /// Takes itself off the definition, if it is there still.
    ~CSaveRaster() override;
    CSaveRaster(const CSaveRaster&) = delete;
    CSaveRaster& operator=(const CSaveRaster&) = delete;

    /// Asks whether to save a modified image, and saves it. Takes the reactor off the definition, which is open for
    /// write, and deletes it unless a flush is under way. `image` holds the edited pixels.
    Adesk::Boolean onDeleteImage(const AcDbRasterImageDef* definition, const Atil::Image* image) override;

    /// Does now what the host would have done when the image goes, and deletes the reactor. Of a definition that can't
    /// be opened the reactor only leaves the chain: it stays there and asks when the image goes.
    void FlushReactor();

    /// Takes all reactors off their definitions without a question, also those that the chain has lost: the host must
    /// not call into a module that is gone.
    static void ForgetAll();

private:
    friend void AttachSaveReactor(AcDbRasterImageDef* definition, int dotsPerInch);
    friend std::optional<int> UnsavedResolution(const AcDbObjectId& definition);
    friend bool FindReactor(CSaveRaster* first, const AcDbObjectId* definition, bool deleteIt);

    void LeaveImage(const AcDbRasterImageDef* definition, const Atil::Image* image);
    void TakeOff();
    void Unlink();
    AcDbRasterImageDef* OpenDefinition() const;

    AcDbObjectId m_definitionId;
    int m_nDpi = 0;                     // of the edited image
    CSaveRaster* m_pPrevious = nullptr; // always null, see above
    CSaveRaster* m_pNext = nullptr;
    bool m_bOnDefinition = true;
    bool m_bClosing = false; // a flush is under way
};

/// Whether the chain from `first` on has a reactor for the definition, which is deleted if asked. Without a definition
/// the whole rest of the chain is deleted, the last first.
bool FindReactor(CSaveRaster* first, const AcDbObjectId* definition, bool deleteIt);

/// Gives the definition, which is open, a reactor unless the chain has one. The edited image has that many dots per
/// inch.
void AttachSaveReactor(AcDbRasterImageDef* definition, int dotsPerInch);

/// The resolution of a definition's edited image, which its file has not yet; nothing if nobody edited it.
std::optional<int> UnsavedResolution(const AcDbObjectId& definition);

/// Flushes reactors until the chain is empty.
void FlushSaveReactors();
