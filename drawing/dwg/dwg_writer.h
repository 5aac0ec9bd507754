#pragma once

#include <list>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/document.h"
#include "drawing/dwg/class_list.h"
#include "drawing/dwg/common_fields.h"
#include "drawing/dwg/file_header.h"
#include "drawing/dwg/header_section.h"
#include "drawing/dwg/object_encoder.h"
#include "drawing/dwg/structure_fields.h"
#include "drawing/mendings.h"

namespace drawing::dwg {

/// Writes a document in the host's binary form of the release 2000.
class DwgWriter
{
public:
    explicit DwgWriter(const Document& document);

    /// The bytes of the file. Throws DrawingError.
    std::string write();
    /// What could not be written and was left out, and what was added.
    Notes notes() const;

private:
    /// A block that is shown and missing.
    struct MadeBlock
    {
        Block block;
        BlockBracket begin{true};
        BlockBracket end{false};
    };

    std::string attempt();
    void enterNames();
    void makeMissingBlocks();
    void collectReferences();
    bool canWrite(const Object& object) const;

    void writeTables();
    void writeMadeRecords();
    void writeControl(const Table& table);
    void reserveViewportList();
    void writeViewportList();
    void writeBlock(const Block& block, const BlockBracket* begin, const BlockBracket* end);
    void writeBlockHeader(const Block& block, const std::vector<Handle>& entities);
    void writeChain(const std::vector<Handle>& entities, Handle owner, int space);
    void writeEntity(const Entity& entity, const Ties& ties);
    void writeObjects();
    void writeObject(const Object& object, Ties ties, Links links);
    std::vector<Handle> writable(const std::vector<Handle>& handles) const;
    Roots roots() const;

    const Document& m_document;
    std::string m_codePage;
    TextEncoding m_encoding;
    RecordNames m_names;
    ClassList m_classes;
    ObjectEncoder m_encoder;
    std::map<Handle, std::vector<Handle>> m_references;       // to each block
    std::map<std::string, std::vector<Handle>> m_madeRecords; // by the table's kind
    std::list<MadeBlock> m_madeBlocks;
    // The list of viewports: its control, and its entries by their viewports, the first one by none.
    Handle m_viewportControl = 0;
    std::map<Handle, Handle> m_viewportEntries;
    std::map<Handle, std::string> m_leftOut; // with the kind's name
};

} // namespace drawing::dwg
