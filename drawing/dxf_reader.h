#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/document_builder.h"
#include "drawing/field_reader.h"
#include "drawing/group_reader.h"
#include "drawing/mendings.h"
#include "drawing/text_encoding.h"

namespace drawing {

/// Reads one DXF file in text form, section by section.
class DxfReader
{
public:
    explicit DxfReader(std::string_view bytes);

    Document read();
    /// What was mended on the way.
    const Mendings& mendings() const { return m_mendings; }

private:
    /// A block reference, for the check that no block holds itself.
    struct Reference
    {
        Handle inBlock = 0;
        const BlockReference* reference = nullptr;
        std::size_t line = 0;
    };

    void advance();
    bool mayEndHere() const;
    bool atRecord(std::string_view name) const;
    [[noreturn]] void fail(const std::string& reason) const;
    std::string decoded(const FileGroup& group);
    Record readRecord();

    void readSection();
    void readHeader();
    void raiseSeed(const std::string& value);
    void readClasses();
    void readTables();
    void readTable();
    void readBlocks();
    void readBlock();
    void readEntities();
    void readObjects();
    void readRawSection(const std::string& name);

    Entity& readEntity(Block* block);
    void readVertices(HeavyPolyline& polyline);
    void readAttributes(BlockReference& reference, bool announced);
    Handle readSequenceEnd(const Entity& owner);
    Object& store(std::unique_ptr<Object> object);
    void mendHandle(Object& object);
    Block& obtainBlock(const std::string& name);
    Block& blockOf(const Entity& entity, bool paperSpace);
    void checkCycles() const;

    FileSurvey m_survey;
    GroupReader m_groups;
    TextEncoding m_encoding;
    DocumentBuilder m_builder;
    Mendings m_mendings;
    FileGroup m_current;
    std::set<std::string> m_sections;       // that were read
    std::map<std::string, Handle> m_blocks; // by name in lower case
    std::vector<Reference> m_references;
};

} // namespace drawing
