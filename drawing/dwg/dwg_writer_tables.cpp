// The tables of a file to be written, and what leads to them.

#include <algorithm>
#include <memory>

#include "drawing/dwg/dwg_writer.h"
#include "drawing/dwg/kinds.h"
#include "drawing/dwg/table_roots.h"

namespace drawing::dwg {

namespace {

const TableType& tableType(std::string_view kind)
{
    return *std::find_if(tableTypes().begin(), tableTypes().end(),
                         [&](const TableType& each) { return each.kind == kind; });
}

} // namespace

// Records first, as they may name others; those that are named and missing are made; then the tables themselves.
void DwgWriter::writeTables()
{
    for (const Handle handle : m_document.tables()) {
        const auto& table = *m_document.find<Table>(handle);
        for (const Handle record : table.records) {
            const Object* found = m_document.find(record);
            if (found && table.kind != "BLOCK_RECORD") {
                writeObject(*found, {}, {});
            }
        }
    }
    writeMadeRecords();
    for (const Handle handle : m_document.tables()) {
        writeControl(*m_document.find<Table>(handle));
    }
    writeViewportList();
}

namespace {

std::unique_ptr<TableRecord> madeRecord(const RecordNames::Record& of, const Document& document)
{
    std::unique_ptr<TableRecord> made;
    if (of.kind == "LAYER") {
        auto layer = std::make_unique<Layer>();
        if (const Layer* first = document.findLayer("0")) {
            layer->plotStyle = first->plotStyle;
        }
        made = std::move(layer);
    } else if (of.kind == "LTYPE") {
        made = std::make_unique<Linetype>();
    } else if (of.kind == "STYLE") {
        auto style = std::make_unique<TextStyle>();
        style->font = "txt";
        made = std::move(style);
    } else {
        made = std::make_unique<RawTableRecord>(of.kind);
    }
    made->recordName = of.name;
    made->handle = of.handle;
    made->owner = document.table(of.kind).handle;
    return made;
}

} // namespace

void DwgWriter::writeMadeRecords()
{
    for (std::size_t i = 0; i < m_names.made().size(); ++i) {
        const RecordNames::Record of = m_names.made()[i];
        const auto record = madeRecord(of, m_document);
        m_madeRecords[of.kind].push_back(of.handle);
        writeObject(*record, {}, {});
    }
}

void DwgWriter::writeControl(const Table& table)
{
    ControlFields control;
    control.records = table.records;
    const auto& made = m_madeRecords[table.kind];
    control.records.insert(control.records.end(), made.begin(), made.end());
    const auto setApart = [&](Handle record) {
        std::erase(control.records, record);
        control.special.push_back(record);
    };
    if (table.kind == "BLOCK_RECORD") {
        setApart(m_document.modelSpace().handle);
        setApart(m_document.paperSpace().handle);
    } else if (table.kind == "LTYPE") {
        setApart(m_names.find("LTYPE", "ByBlock"));
        setApart(m_names.find("LTYPE", "ByLayer"));
    }
    Record record;
    ObjectFields f(table.handle, m_encoding, m_names, record);
    Ties ties{0, table.reactors, table.extensionDictionary};
    objectCommon(f, ties);
    const int type = tableType(table.kind).control;
    controlFields(f, type, control);
    m_encoder.add(type, nullptr, table.handle, f);
}

void DwgWriter::reserveViewportList()
{
    m_viewportControl = m_names.reserve();
    m_viewportEntries.clear();
    for (const Handle entity : writable(m_document.paperSpace().entities)) {
        if (m_document.find<Viewport>(entity)) {
            m_viewportEntries.try_emplace(0); // the host's list begins with an entry of no viewport
            m_viewportEntries.try_emplace(entity);
        }
    }
    for (auto& [viewport, entry] : m_viewportEntries) {
        entry = m_names.reserve();
    }
}

// Each entry leads to the next, but for the one of no viewport.
void DwgWriter::writeViewportList()
{
    ControlFields control;
    for (auto each = m_viewportEntries.begin(); each != m_viewportEntries.end(); ++each) {
        const auto& [handle, entry] = *each;
        const auto next = std::next(each);
        const auto* viewport = m_document.find<Viewport>(handle);
        ViewportEntryFields fields;
        fields.on = !viewport || (viewport->flags & Viewport::offFlag) == 0;
        fields.viewport = handle;
        fields.next = viewport && next != m_viewportEntries.end() ? next->second : 0;
        const bool sheet = viewport && viewport->number == Viewport::sheetNumber;
        Record record{"", 0, {PlacedGroup(Group{2, sheet ? "1" : ""})}};
        ObjectFields f(entry, m_encoding, m_names, record);
        Ties ties{m_viewportControl, {}};
        objectCommon(f, ties);
        viewportEntryFields(f, fields);
        m_encoder.add(viewportHeaderType, nullptr, entry, f);
        control.records.push_back(entry);
    }
    Record record;
    ObjectFields f(m_viewportControl, m_encoding, m_names, record);
    Ties ties;
    objectCommon(f, ties);
    controlFields(f, viewportHeaderControlType, control);
    m_encoder.add(viewportHeaderControlType, nullptr, m_viewportControl, f);
}

Roots DwgWriter::roots() const
{
    constexpr std::pair<std::string_view, Root> dictionaries[] = {{"ACAD_GROUP", Root::GroupDictionary},
                                                                  {"ACAD_MLINESTYLE", Root::MultilineStyleDictionary},
                                                                  {"ACAD_LAYOUT", Root::LayoutDictionary},
                                                                  {"ACAD_PLOTSETTINGS", Root::PlotSettingsDictionary},
                                                                  {"ACAD_PLOTSTYLENAME", Root::PlotStyleDictionary}};
    Roots roots;
    for (const auto& [kind, root] : tableRoots) {
        roots[root] = m_document.table(kind).handle;
    }
    for (const auto& [key, root] : dictionaries) {
        roots[root] = m_document.rootDictionary().find(key);
    }
    roots[Root::ViewportHeaderControl] = m_viewportControl;
    roots[Root::NamedObjects] = m_document.rootDictionary().handle;
    roots[Root::PaperSpace] = m_document.paperSpace().handle;
    roots[Root::ModelSpace] = m_document.modelSpace().handle;
    roots[Root::ByLayer] = m_names.find("LTYPE", "ByLayer");
    roots[Root::ByBlock] = m_names.find("LTYPE", "ByBlock");
    roots[Root::Continuous] = m_names.find("LTYPE", "Continuous");
    return roots;
}

} // namespace drawing::dwg
