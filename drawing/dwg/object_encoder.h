#pragma once

#include <string>
#include <vector>

#include "drawing/dwg/object_fields.h"

namespace drawing::dwg {

/// An object as the file has it: length, bits and checksum.
struct EncodedObject
{
    Handle handle = 0;
    std::string bytes;
};

/// Puts the bits of a file's objects together.
class ObjectEncoder
{
public:
    /// `codePage`: by the form's own count. What is named has to live as long as this.
    ObjectEncoder(const TextEncoding& encoding, int codePage, RecordNames& names);

    /// Adds an object whose fields have been written. `object` adds what was carried along of it; null for what is no
    /// object of the drawing. Throws DrawingError.
    void add(int type, const Object* object, Handle handle, ObjectFields& f);
    /// All of them, in the order of their handles; then there are none.
    std::vector<EncodedObject> take();

private:
    void putExtendedData(const Object& object, BitWriter& writer);

    const TextEncoding& m_encoding;
    int m_codePage;
    RecordNames& m_names;
    std::vector<EncodedObject> m_objects;
};

} // namespace drawing::dwg
