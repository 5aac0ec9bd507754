// Arrays of object ids.
#pragma once

#include <vector>

#include "standin/arx/dbid.h"

class HALVORAN_STANDIN_API AcDbObjectIdArray
{
public:
    /// The room that is made at first and the growth are hints.
    explicit AcDbObjectIdArray(int room = 0, int growth = 8);

    int length() const { return int(m_ids.size()); }
    bool isEmpty() const { return m_ids.empty(); }
    /// The index must be in range.
    const AcDbObjectId& at(int index) const { return m_ids.at(std::size_t(index)); }
    AcDbObjectId& at(int index) { return m_ids.at(std::size_t(index)); }
    const AcDbObjectId& operator[](int index) const { return at(index); }
    AcDbObjectId& operator[](int index) { return at(index); }
    int append(const AcDbObjectId& id);
    AcDbObjectIdArray& removeAt(int index);
    /// Removes the first one alike; false if there is none.
    bool remove(const AcDbObjectId& id);
    bool contains(const AcDbObjectId& id) const;
    bool find(const AcDbObjectId& id, int& index) const;
    AcDbObjectIdArray& setLogicalLength(int length);

private:
    std::vector<AcDbObjectId> m_ids;
};

/// What the user has selected, or selected last.
HALVORAN_STANDIN_API Acad::ErrorStatus acedGetCurrentSelectionSet(AcDbObjectIdArray& ids);
