#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/document_builder.h"
#include "drawing/dwg/file_header.h"
#include "drawing/dwg/object_decoder.h"
#include "drawing/mendings.h"

namespace drawing::dwg {

/// Reads one file of the host's binary form of the release 2000.
class DwgReader
{
public:
    /// Throws DrawingError for other releases and damaged headers. The bytes have to live as long as the reader.
    explicit DwgReader(std::string_view bytes);

    Document read();
    /// What was mended or left unread on the way.
    Notes notes() const;

private:
    void readClassSection();
    std::string_view headerContent() const;
    void checkPlaces() const;
    std::vector<Handle> recordsAhead(ObjectDecoder& decoder, Handle control) const;
    void readNames();
    void readObjects();
    void readHeader();
    void readPreview();
    void buildTables();
    void buildBlocks();
    void buildBlock(Block& block);
    void buildEntity(Entity& entity);
    void numberViewports(const Block& block);
    void buildRest();
    void checkCycles() const;
    void allowForCompletion();
    template <class Kind> std::vector<Handle> chain(Handle first, Handle last, Handle owner);
    std::vector<ObjectPlace>::const_iterator placeOf(Handle handle) const;
    DecodedObject* decoded(Handle handle);
    template <class T> T* storeAs(Handle handle, Handle owner);

    std::string_view m_bytes;
    FileHeader m_header;
    TextEncoding m_encoding;
    std::vector<ObjectClass> m_classes;
    std::vector<ObjectPlace> m_places; // by their handles
    RecordNames m_names;
    std::vector<DecodedObject> m_objects; // at the places
    Allowance m_allowance;
    DocumentBuilder m_builder;
    Mendings m_mendings;
    std::map<std::string, std::size_t> m_unread; // by the kind's name
};

} // namespace drawing::dwg
