#include "module/commands/PlaceRaster.h"

#include <memory>

#include "module/base/CArxApp.h"
#include "module/base/CScopeGuard.h"
#include "module/base/SayOnCommandLine.h"
#include "module/raster/CCurentRaster.h"
#include "module/shell/CPathSplit.h"

namespace {

constexpr int shareDenyWrite = 32;

// The one definition of the worker's drawing, open for write; null if there is none.
AcDbRasterImageDef* OpenOnlyDefinition(AcDbDatabase& database)
{
    AcDbObjectId id = AcDbRasterImageDef::imageDictionary(&database);
    if (id.isNull())
        AcDbRasterImageDef::createImageDictionary(&database, id);
    AcDbObject* object = nullptr;
    if (acdbOpenAcDbObject(object, id, AcDb::kForRead, AcDbDictionary::desc()) != Acad::eOk)
        return nullptr;
    auto* dictionary = static_cast<AcDbDictionary*>(object);
    const CScopeGuard close([dictionary] { dictionary->close(); });
    const std::unique_ptr<AcDbDictionaryIterator> entries(dictionary->newIterator());
    AcDbObject* entry = nullptr;
    if (entries->done() || entries->getObject(entry, AcDb::kForWrite) != Acad::eOk)
        return nullptr;
    return static_cast<AcDbRasterImageDef*>(entry);
}

// The drawing stores the bare name, which the host looks for on its own paths; the open drawing shows the file itself.
void StoreNameWithoutFolder(AcDbDatabase& database, const CString& path)
{
    AcDbRasterImageDef* definition = OpenOnlyDefinition(database);
    if (!definition)
        return;
    definition->unload(true);
    definition->setSourceFileName(CPathSplit(path).NameExt());
    definition->setActiveFileName(path);
    definition->load();
    definition->close();
}

void ZoomTo(const WorkerPoint& corner, const WorkerPoint& oppositeCorner)
{
    // Not set back afterwards: later commands stay quiet too.
    resbuf quiet{};
    quiet.restype = RTSHORT;
    quiet.resval.rint = 0;
    acedSetVar(L"cmdecho", &quiet);
    const ads_point first = {corner.x, corner.y, corner.z};
    const ads_point second = {oppositeCorner.x, oppositeCorner.y, oppositeCorner.z};
    acedCommand(RTSTR, L"_zoom", RTSTR, L"w", RT3DPOINT, first, RT3DPOINT, second, RTNONE);
}

} // namespace

CSurrenderedRaster::CSurrenderedRaster()
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    ads_name name;
    current.m_pRaster->GetEntityName(name);
    AcDbObjectId id;
    if (acdbGetObjectId(id, name) == Acad::eOk)
        m_entity = id;
    DropCurrentRaster();
}

void CSurrenderedRaster::MakeCurrentAgain()
{
    ads_name name;
    if (!m_entity || acdbGetAdsName(name, *m_entity) != Acad::eOk)
        return;
    auto raster = std::make_unique<CAcraster>(name);
    if (!raster->HasImage())
        return;
    g_pArxApp->m_pRaster = raster.release();
    g_pArxApp->m_pRaster->Unlock();
}

void PlaceRaster(const Placement& placement)
{
    AcDbDatabase* working = acdbHostApplicationServices()->workingDatabase();
    {
        const auto source = std::make_unique<AcDbDatabase>(false, false);
        if (source->readDwgFile(placement.drawingFile, shareDenyWrite, false, nullptr) != Acad::eOk) {
            SayOnCommandLine(placement.rasterFile + L" was not placed: its drawing can't be read.");
            return;
        }
        if (!placement.savePath)
            StoreNameWithoutFolder(*source, placement.rasterFile);
        AcDbObjectId dictionary = AcDbRasterImageDef::imageDictionary(working);
        if (dictionary.isNull())
            AcDbRasterImageDef::createImageDictionary(working, dictionary);
        if (working->insert(AcGeMatrix3d(), source.get(), true) != Acad::eOk) {
            SayOnCommandLine(placement.rasterFile + L" was not placed: the drawing does not take it.");
            return;
        }
    }
    if (placement.zoom)
        ZoomTo(placement.corner, placement.oppositeCorner);
}

void ShowError(const wchar_t* text)
{
    AfxMessageBox(text, MB_OK | MB_ICONSTOP);
}
