#include "module/raster/CSaveRaster.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include "module/base/CArxApp.h"
#include "module/base/CScopeGuard.h"
#include "module/base/CTempMFC.h"
#include "module/base/RedrawView.h"
#include "module/base/SayOnCommandLine.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/raster/CDocumentLock.h"
#include "module/raster/PendingFileSwap.h"
#include "module/raster/SaveUnderChosenName.h"
#include "module/resources/resource.h"

namespace {

std::vector<CSaveRaster*>& AllReactors()
{
    static std::vector<CSaveRaster*> reactors;
    return reactors;
}

void LetGoOfCurrentRaster()
{
    if (!g_pArxApp->m_pRaster)
        return;
    DropCurrentRaster();
    RedrawActiveView();
}

// The edits have no other place than the image that is about to go, and the raster's file if the user wants so.
void OfferToSave(AcDbRasterImageDef& definition, Atil::Image& image)
{
    const CTempMFC resources;
    LetGoOfCurrentRaster();
    const CString name(definition.sourceFileName());
    CString question;
    question.Format(IDS_SAVE_CHANGES, name.GetString());
    if (AfxMessageBox(question, MB_YESNO) != IDYES)
        return;
    CAcraster raster(&definition, &image);
    if (!SaveUnderChosenName(raster, nullptr))
        SayOnCommandLine(L"The changes to " + name + L" were not saved.");
}

} // namespace

CSaveRaster::CSaveRaster(AcDbRasterImageDef* definition)
    : m_definitionId(definition->objectId()), m_pNext(g_pArxApp->m_pSaveList)
{
    g_pArxApp->m_pSaveList = this;
    AllReactors().push_back(this);
    definition->addReactor(this);
}

CSaveRaster::~CSaveRaster()
{
    if (m_bOnDefinition)
        TakeOff();
    Unlink();
    std::erase(AllReactors(), this);
    // The one before it, which the chain has lost by now.
    for (CSaveRaster* each : AllReactors()) {
        if (each->m_pNext == this)
            each->m_pNext = m_pNext;
    }
}

void CSaveRaster::TakeOff()
{
    // For notification it opens also while somebody else has it open for write.
    AcDbRasterImageDef* definition = nullptr;
    if (acdbOpenObject(definition, m_definitionId, AcDb::kForNotify, true) != Acad::eOk)
        return;
    definition->removeReactor(this);
    definition->close();
}

void CSaveRaster::Unlink()
{
    if (m_pPrevious) {
        m_pPrevious->m_pNext = m_pNext;
    } else {
        g_pArxApp->m_pSaveList = nullptr;
    }
    if (m_pNext)
        m_pNext->m_pPrevious = m_pPrevious;
}

void CSaveRaster::LeaveImage(const AcDbRasterImageDef* definition, const Atil::Image* image)
{
    definition->removeReactor(this);
    m_bOnDefinition = false;
    // The host hands out what it has open for write; the copy is the module's own.
    if (definition->imageModified() && image)
        OfferToSave(const_cast<AcDbRasterImageDef&>(*definition), const_cast<Atil::Image&>(*image));
}

Adesk::Boolean CSaveRaster::onDeleteImage(const AcDbRasterImageDef* definition, const Atil::Image* image)
{
    LeaveImage(definition, image);
    if (!m_bClosing) {
        // The image goes whatever was saved, and perhaps the definition: there will be nothing to load again.
        ForgetDefinitionOfSwap(m_definitionId);
        delete this;
    }
    return 0;
}

AcDbRasterImageDef* CSaveRaster::OpenDefinition() const
{
    // A stroke that was broken off has left the current raster's objects open. The question would drop the raster
    // anyway.
    const CAcraster* raster = g_pArxApp->m_pRaster;
    if (raster && raster->GetLockCount() > 0 && raster->GetDefinitionId() == m_definitionId)
        LetGoOfCurrentRaster();
    AcDbRasterImageDef* definition = nullptr;
    acdbOpenObject(definition, m_definitionId, AcDb::kForWrite);
    return definition;
}

void CSaveRaster::FlushReactor()
{
    std::optional<CDocumentLock> lock;
    try {
        lock.emplace(m_definitionId); // of whichever drawing
    } catch (...) {
        // A host that refuses the lock may let the definition be opened all the same.
        lock.reset();
    }
    AcDbRasterImageDef* definition = OpenDefinition();
    if (!definition) {
        Unlink();
        return;
    }
    m_bClosing = true;
    const CScopeGuard over([&] {
        definition->close();
        lock.reset();
        delete this;
    });
    const std::unique_ptr<Atil::Image> image(definition->imageCopy(true));
    LeaveImage(definition, image.get());
}

void CSaveRaster::ForgetAll()
{
    const std::vector<CSaveRaster*> all = AllReactors();
    for (CSaveRaster* each : all)
        delete each;
}

bool FindReactor(CSaveRaster* first, const AcDbObjectId* definition, bool deleteIt)
{
    if (!definition) {
        std::vector<CSaveRaster*> rest;
        for (CSaveRaster* each = first; each; each = each->m_pNext)
            rest.push_back(each);
        std::for_each(rest.rbegin(), rest.rend(), [](CSaveRaster* each) { delete each; });
        return true;
    }
    CSaveRaster* found = first;
    while (found && !(found->m_definitionId == *definition))
        found = found->m_pNext;
    if (found && deleteIt)
        delete found;
    return found != nullptr;
}

void AttachSaveReactor(AcDbRasterImageDef* definition, int dotsPerInch)
{
    const AcDbObjectId id = definition->objectId();
    if (!FindReactor(g_pArxApp->m_pSaveList, &id, false))
        new CSaveRaster(definition); // deletes itself when the image goes
    for (CSaveRaster* each : AllReactors()) {
        if (each->m_definitionId == id)
            each->m_nDpi = dotsPerInch;
    }
}

std::optional<int> UnsavedResolution(const AcDbObjectId& definition)
{
    for (const CSaveRaster* each : AllReactors()) {
        if (each->m_definitionId == definition && each->m_nDpi > 0)
            return each->m_nDpi;
    }
    return std::nullopt;
}

void FlushSaveReactors()
{
    while (g_pArxApp->m_pSaveList)
        g_pArxApp->m_pSaveList->FlushReactor();
}
