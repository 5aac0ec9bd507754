#include "module/raster/CShownFile.h"

#include <memory>

#include "module/base/CScopeGuard.h"
#include "module/raster/CDocumentLock.h"
#include "module/raster/SetAsideFile.h"

namespace {

template <class Work> void WithDefinition(const AcDbObjectId& id, AcDb::OpenMode mode, const Work& work)
{
    AcDbRasterImageDef* definition = nullptr;
    if (acdbOpenObject(definition, id, mode) != Acad::eOk)
        return;
    const CScopeGuard close([definition] { definition->close(); });
    work(*definition);
}

void ForEach(const std::vector<AcDbObjectId>& definitions, void (*work)(AcDbRasterImageDef&))
{
    for (const AcDbObjectId& id : definitions) {
        const CDocumentLock lock(id);
        WithDefinition(id, AcDb::kForWrite, work);
    }
}

} // namespace

CShownFile::CShownFile(AcDbDatabase* database, const CString& path, const AcDbObjectId& own)
{
    FindIn(database, path, own);
    if (m_bEdited)
        m_definitions.clear();
    ForEach(m_definitions, [](AcDbRasterImageDef& definition) { definition.unload(false); });
}

CShownFile::~CShownFile()
{
    ForEach(m_definitions, [](AcDbRasterImageDef& definition) { definition.load(); });
}

void CShownFile::FindIn(AcDbDatabase* database, const CString& path, const AcDbObjectId& own)
{
    AcDbObject* object = nullptr;
    const AcDbObjectId id = AcDbRasterImageDef::imageDictionary(database);
    if (id.isNull() || acdbOpenAcDbObject(object, id, AcDb::kForRead, AcDbDictionary::desc()) != Acad::eOk)
        return;
    auto* dictionary = static_cast<AcDbDictionary*>(object);
    const CScopeGuard close([dictionary] { dictionary->close(); });
    const std::unique_ptr<AcDbDictionaryIterator> entries(dictionary->newIterator());
    for (; !entries->done(); entries->next()) {
        const AcDbObjectId each = entries->objectId();
        if (each == own)
            continue;
        WithDefinition(each, AcDb::kForRead, [&](const AcDbRasterImageDef& definition) {
            if (!definition.isLoaded() || !IsSameFile(path, CString(definition.activeFileName())))
                return;
            m_definitions.push_back(each);
            m_bEdited = m_bEdited || definition.imageModified();
        });
    }
}
