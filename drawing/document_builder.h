#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "drawing/document.h"

namespace drawing {

/// Puts a document together piece by piece, and completes what a drawing of the release 2000 must have.
class DocumentBuilder
{
public:
    DocumentBuilder() : m_document(Document::Bare{}) {}

    Document& document() { return m_document; }

    /// Takes an object into the drawing without entering it in any list. A handle of 0 is replaced by a new one.
    Object& store(std::unique_ptr<Object> object) { return m_document.store(std::move(object)); }
    Table& addTable(std::unique_ptr<Table> table);
    Table* findTable(std::string_view kind);
    /// Enters a stored object in the list of the objects of no table and no block.
    void list(Handle object) { m_document.m_objects.push_back(object); }
    /// Adds a block without its brackets. The tables must be there.
    Block& addBlock(std::string_view name);
    /// Adds the tables that are missing.
    void completeTables();

    /// Adds what is missing, from tables to layouts, and hands the document over.
    Document complete();

private:
    void completeRecords();
    void completeBlocks();
    void completeImages();
    void completeRoot();
    void completePlotStyles();
    void completeMultilineStyle();
    void completeLayouts();
    void completeLayout(Block& block, Dictionary& layouts, const std::string& name);
    void completeHeader();
    Dictionary& obtainDictionary(std::string_view key);

    Document m_document;
};

} // namespace drawing
