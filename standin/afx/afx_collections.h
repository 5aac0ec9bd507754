// Arrays of values that grow on demand.
#pragma once

#include <vector>

#include "standin/afx/afx_object.h"
#include "standin/afx/afx_string.h"

/// An index outside the array ends the program in std::vector::at's exception, as in a checked build.
template <typename Type, typename Argument = const Type&> class CArray : public CObject
{
public:
    INT_PTR GetSize() const { return static_cast<INT_PTR>(m_items.size()); }
    INT_PTR GetCount() const { return GetSize(); }
    INT_PTR GetUpperBound() const { return GetSize() - 1; }
    BOOL IsEmpty() const { return m_items.empty(); }
    void SetSize(INT_PTR size, INT_PTR = -1) { m_items.resize(static_cast<std::size_t>(size)); }
    void RemoveAll() { m_items.clear(); }
    void FreeExtra() { m_items.shrink_to_fit(); }

    const Type& GetAt(INT_PTR index) const { return m_items.at(static_cast<std::size_t>(index)); }
    Type& GetAt(INT_PTR index) { return m_items.at(static_cast<std::size_t>(index)); }
    Type& ElementAt(INT_PTR index) { return GetAt(index); }
    void SetAt(INT_PTR index, Argument value) { GetAt(index) = value; }
    const Type& operator[](INT_PTR index) const { return GetAt(index); }
    Type& operator[](INT_PTR index) { return GetAt(index); }
    const Type* GetData() const { return m_items.data(); }
    Type* GetData() { return m_items.data(); }

    /// Returns the index of the new item.
    INT_PTR Add(Argument value)
    {
        m_items.push_back(value);
        return GetUpperBound();
    }
    INT_PTR Append(const CArray& other)
    {
        const INT_PTR first = GetSize();
        m_items.insert(m_items.end(), other.m_items.begin(), other.m_items.end());
        return first;
    }
    void Copy(const CArray& other) { m_items = other.m_items; }
    void SetAtGrow(INT_PTR index, Argument value)
    {
        if (index >= GetSize())
            SetSize(index + 1);
        SetAt(index, value);
    }
    void InsertAt(INT_PTR index, Argument value, INT_PTR count = 1)
    {
        if (index > GetSize())
            SetSize(index);
        m_items.insert(m_items.begin() + index, static_cast<std::size_t>(count), value);
    }
    void RemoveAt(INT_PTR index, INT_PTR count = 1)
    {
        m_items.erase(m_items.begin() + index, m_items.begin() + index + count);
    }

private:
    std::vector<Type> m_items;
};

class CStringArray : public CArray<CString>
{};
class CUIntArray : public CArray<UINT, UINT>
{};
class CDWordArray : public CArray<DWORD, DWORD>
{};
class CByteArray : public CArray<BYTE, BYTE>
{};
class CPtrArray : public CArray<void*, void*>
{};
