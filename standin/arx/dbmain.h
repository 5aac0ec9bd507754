// Databases: the content of one drawing.
#pragma once

#include <memory>

#include "standin/arx/dbidar.h"
#include "standin/arx/dbobject.h"
#include "standin/arx/gemat3d.h"

namespace drawing {
class Document;
}

class HALVORAN_STANDIN_API AcDbDatabase : public AcRxObject
{
    ACRX_DECLARE_MEMBERS(AcDbDatabase);

    /// An empty drawing, or nothing at all until a file is read; without a document unless the host opens it.
    explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    ~AcDbDatabase() override;
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;

    /// Reads a drawing file by its content. eFileNotFound, eFileAccessErr, or eDwgNeedsRecovery if it is broken.
    Acad::ErrorStatus readDwgFile(const ACHAR* fileName, int shareMode = 0, bool allowCodePageConversion = false,
                                  const wchar_t* password = nullptr);

    /// Copies the source's model space, with the tables and image definitions that it needs, into this one; symbols of
    /// a name that is there already keep this one's meaning. The source stays as it is, which has to be asked for.
    /// eNotApplicable for a transformation other than the identity.
    Acad::ErrorStatus insert(const AcGeMatrix3d& transform, AcDbDatabase* source, bool preserveSource = true);

    /// A new database, which the caller deletes, with copies of these entities and of what they refer to. The base
    /// point becomes the new one's origin of insertion; the entities stay where they are.
    Acad::ErrorStatus wblock(AcDbDatabase*& target, const AcDbObjectIdArray& entities, const AcGePoint3d& basePoint);

    /// Writes a drawing file over what is there, under the very name given. No file, or the old one, is left behind
    /// when that fails. Security parameters are not supported and must be null.
    Acad::ErrorStatus saveAs(const ACHAR* fileName, bool backupAndRename, AcDb::AcDbDwgVersion version,
                             const void* security = nullptr);

    Acad::ErrorStatus getFilename(const ACHAR*& fileName) const;
    /// True in model space, false in a paper-space layout.
    bool tilemode() const;

    /// For the stand-in's own use: state behind the database, never null.
    struct State;
    State& state() const { return *m_state; }

private:
    std::unique_ptr<State> m_state;
};
