// Dictionaries: objects of a database by name.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "standin/arx/dbobject.h"

/// Walks a dictionary's entries as they were when the iterator was made. The caller deletes it.
class HALVORAN_STANDIN_API AcDbDictionaryIterator : public AcRxObject
{
    ACRX_DECLARE_MEMBERS(AcDbDictionaryIterator);

    struct Entry
    {
        std::wstring name;
        AcDbObjectId id;
    };
    explicit AcDbDictionaryIterator(std::vector<Entry> entries);

    bool done() const { return m_next >= m_entries.size(); }
    /// Whether there is an entry after this one.
    bool next();
    const ACHAR* name() const;
    AcDbObjectId objectId() const;
    /// Opens the entry's object; the caller closes it.
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode = AcDb::kForRead);

private:
    std::vector<Entry> m_entries;
    std::size_t m_next = 0;
};

class HALVORAN_STANDIN_API AcDbDictionary : public AcDbObject
{
    ACRX_DECLARE_MEMBERS(AcDbDictionary);

    AcDbDictionary() = default;

    AcDbDictionaryIterator* newIterator() const;
    Adesk::UInt32 numEntries() const;
    /// eKeyNotFound if there is none of that name.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id) const;
};
