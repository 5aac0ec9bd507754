#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drawing/binary_part.h"
#include "drawing/dwg/allowance.h"
#include "drawing/dwg/class_section.h"
#include "drawing/dwg/common_fields.h"
#include "drawing/dwg/kinds.h"
#include "drawing/dwg/object_map.h"
#include "drawing/dwg/structure_fields.h"
#include "drawing/text_encoding.h"

namespace drawing::dwg {

/// An object as the file has it. There may be many, so what only few have stands apart.
struct DecodedObject
{
    int type = 0;        // 0 of kinds that the list of classes tells
    bool unread = false; // as the kind's own fields could not be read
    Handle handle = 0;
    Ties ties; // but for the reactors, which the object has
    Links links;
    std::unique_ptr<Object> object; // null for controls
    std::unique_ptr<ControlFields> control;
    std::unique_ptr<BlockHeaderFields> block;
};

/// Reads the objects of one file.
class ObjectDecoder
{
public:
    /// What the objects take is taken off `allowance`.
    ObjectDecoder(std::string_view file, const std::vector<ObjectClass>& classes, const TextEncoding& encoding,
                  RecordNames& names, Allowance& allowance);

    /// Where the object ends, its checksum included. Throws DrawingError if it does not lie in the file or its checksum
    /// is another; the other calls are for objects that were checked.
    std::size_t checkedEnd(const ObjectPlace& place) const;
    /// If the object is a record of a table, enters its name.
    /// Blocks without names of their own are numbered by their places in the table, `blocks`.
    void enterName(const ObjectPlace& place, const std::unordered_map<Handle, std::size_t>& blocks);
    /// Throws DrawingError if what all objects have can't be read. An object of an unknown kind is kept as bits, and so
    /// is one whose own fields can't be read, of which there must not be very many.
    DecodedObject decode(const ObjectPlace& place);

private:
    struct Head
    {
        int type = 0;
        const ObjectClass* objectClass = nullptr;
        const Kind* kind = nullptr;
        bool entity = false;
        std::size_t size = 0; // in bytes
        BitReader data{""};
        BitReader handles{""};
        Groups extendedData;
        std::vector<BinaryPart::Extension> extensions;
    };

    std::string_view content(const ObjectPlace& place, std::size_t& begin) const;
    Head head(const ObjectPlace& place) const;
    void extendedData(Head& head);
    void countFailure();
    void classify(Head& head) const;
    void structure(ObjectFields& f, const Head& head, DecodedObject& decoded) const;
    // What the object takes is given back.
    std::size_t decodeFields(const Head& head, DecodedObject& decoded);
    std::size_t decodeRaw(const Head& head, DecodedObject& decoded);
    std::unique_ptr<Object> makeObjectOf(const Head& head, Record& record) const;

    std::string_view m_file;
    const std::vector<ObjectClass>& m_classes;
    const TextEncoding& m_encoding;
    RecordNames& m_names;
    Allowance& m_allowance;
    std::size_t m_failures = 0;
};

} // namespace drawing::dwg
