#pragma once

#include <string>
#include <string_view>

#include "drawing/document.h"
#include "drawing/field_writer.h"
#include "drawing/mendings.h"

namespace drawing {

/// Writes a document as a DXF file of the release 2000.
class DxfWriter
{
public:
    explicit DxfWriter(const Document& document, DxfForm form = DxfForm::Text);

    std::string write();
    /// What only the binary form can hold and was left out.
    Notes notes() const;

private:
    void beginSection(std::string_view name);
    void endSection();
    void writeHeader();
    void writeClasses();
    void writeTables();
    void writeBlocks();
    void writeBracket(const Block& block, Handle bracket);
    void writeEntities();
    void writeEntitiesOf(const Block& block, bool paperSpace);
    void writeEntity(const Entity& entity, bool paperSpace);
    Dictionary withoutBinary(const Dictionary& dictionary) const;
    void writeObjects();

    const Document& m_document;
    std::string m_codePage;
    DxfSink m_sink;
};

} // namespace drawing
