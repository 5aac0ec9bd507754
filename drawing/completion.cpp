// What a drawing must have besides the user's own: added where it is missing, left alone where it is there.

#include <algorithm>
#include <array>
#include <string>
#include <unordered_set>

#include "drawing/default_values.h"
#include "drawing/document_builder.h"
#include "drawing/lower_case.h"
#include "drawing/numbers.h"

namespace drawing {

namespace {

constexpr std::array<std::string_view, 9> tableKinds{"VPORT", "LTYPE", "LAYER",    "STYLE",       "VIEW",
                                                     "UCS",   "APPID", "DIMSTYLE", "BLOCK_RECORD"};
constexpr std::string_view modelSpaceName = "*Model_Space";
constexpr std::string_view paperSpaceName = "*Paper_Space";

std::unique_ptr<RawObject> makeRaw(std::string name, std::vector<KeptGroups> kept)
{
    auto object = std::make_unique<RawObject>(std::move(name));
    object->kept = std::move(kept);
    return object;
}

} // namespace

Table& DocumentBuilder::addTable(std::unique_ptr<Table> table)
{
    Table& added = static_cast<Table&>(store(std::move(table)));
    m_document.m_tables.push_back(added.handle);
    return added;
}

Table* DocumentBuilder::findTable(std::string_view kind)
{
    for (const Handle handle : m_document.m_tables) {
        auto* table = m_document.find<Table>(handle);
        if (table->kind == kind) {
            return table;
        }
    }
    return nullptr;
}

Block& DocumentBuilder::addBlock(std::string_view name)
{
    auto made = std::make_unique<Block>();
    made->recordName = name;
    made->owner = m_document.table("BLOCK_RECORD").handle;
    Block& block = static_cast<Block&>(store(std::move(made)));
    m_document.table("BLOCK_RECORD").records.push_back(block.handle);
    return block;
}

void DocumentBuilder::completeTables()
{
    for (const std::string_view kind : tableKinds) {
        if (!findTable(kind)) {
            addTable(std::make_unique<Table>(std::string(kind)));
        }
    }
}

void DocumentBuilder::completeRecords()
{
    if (!m_document.findRecord("VPORT", "*Active")) {
        auto viewport = std::make_unique<ViewportRecord>();
        viewport->recordName = std::string("*Active");
        viewport->center = {210, 148.5};
        viewport->height = 297;
        viewport->aspect = 1.5;
        viewport->kept = {{"AcDbViewportTableRecord", defaultViewportGroups()}};
        m_document.addRecord(std::move(viewport));
    }
    for (const std::string_view name : {"ByBlock", "ByLayer", "Continuous"}) {
        if (!m_document.findLinetype(name)) {
            auto linetype = std::make_unique<Linetype>();
            linetype->recordName = name;
            linetype->description = std::string(name == "Continuous" ? "Solid line" : "");
            m_document.addRecord(std::move(linetype));
        }
    }
    if (!m_document.findLayer("0")) {
        auto layer = std::make_unique<Layer>();
        layer->recordName = std::string("0");
        m_document.addRecord(std::move(layer));
    }
    if (!m_document.findTextStyle("Standard")) {
        auto style = std::make_unique<TextStyle>();
        style->recordName = std::string("Standard");
        style->font = std::string("txt");
        m_document.addRecord(std::move(style));
    }
    const std::pair<const char*, const char*> rawRecords[] = {{"APPID", "ACAD"}, {"DIMSTYLE", "Standard"}};
    for (const auto& [kind, name] : rawRecords) {
        if (!m_document.findRecord(kind, name)) {
            auto record = std::make_unique<RawTableRecord>(kind);
            record->recordName = name;
            if (record->kind == "DIMSTYLE") {
                record->kept = {{"AcDbDimStyleTableRecord", defaultDimensionGroups()}};
            }
            m_document.addRecord(std::move(record));
        }
    }
}

void DocumentBuilder::completeBlocks()
{
    for (const std::string_view name : {modelSpaceName, paperSpaceName}) {
        Block* block = m_document.findBlock(name);
        if (!block) {
            block = &addBlock(name);
        }
        (name == modelSpaceName ? m_document.m_modelSpace : m_document.m_paperSpace) = block->handle;
    }
    for (const Handle handle : m_document.table("BLOCK_RECORD").records) {
        auto& block = *m_document.find<Block>(handle);
        for (const bool begin : {true, false}) {
            Handle& bracket = begin ? block.begin : block.end;
            if (bracket == 0) {
                auto made = std::make_unique<BlockBracket>(begin);
                made->owner = block.handle;
                bracket = store(std::move(made)).handle;
            }
        }
    }
}

// The host takes a definition for one that nothing shows unless a reactor ties each image to it.
void DocumentBuilder::completeImages()
{
    for (const Handle block : m_document.table("BLOCK_RECORD").records) {
        for (const Handle entity : m_document.find<Block>(block)->entities) {
            auto* image = m_document.find<Image>(entity);
            auto* definition = image ? m_document.find<ImageDefinition>(image->definition) : nullptr;
            if (definition && !m_document.find<ImageDefinitionReactor>(image->definitionReactor)) {
                auto& reactor = m_document.addObject(std::make_unique<ImageDefinitionReactor>(), entity);
                reactor.image = entity;
                image->definitionReactor = reactor.handle;
                definition->reactors.push_back(reactor.handle);
            }
        }
    }
}

// The root dictionary comes first among the objects.
void DocumentBuilder::completeRoot()
{
    auto& objects = m_document.m_objects;
    const auto isRoot = [&](Handle handle) {
        const auto* dictionary = m_document.find<Dictionary>(handle);
        return dictionary && m_document.find(dictionary->owner) == nullptr;
    };
    const auto root = std::find_if(objects.begin(), objects.end(), isRoot);
    if (root != objects.end()) {
        std::rotate(objects.begin(), root, root + 1);
    } else {
        objects.insert(objects.begin(), store(std::make_unique<Dictionary>()).handle);
    }
}

Dictionary& DocumentBuilder::obtainDictionary(std::string_view key)
{
    Dictionary& root = m_document.rootDictionary();
    if (auto* present = m_document.find<Dictionary>(root.find(key))) {
        return *present;
    }
    Dictionary& made = m_document.addObject(std::make_unique<Dictionary>(), root.handle);
    made.reactors.push_back(root.handle);
    root.set(key, made.handle);
    return made;
}

// Plot style names: a dictionary with a default entry, to which the layers refer.
void DocumentBuilder::completePlotStyles()
{
    Dictionary& root = m_document.rootDictionary();
    if (!m_document.find(root.find("ACAD_PLOTSTYLENAME"))) {
        RawObject& names = m_document.addObject(makeRaw("ACDBDICTIONARYWDFLT", {}), root.handle);
        names.reactors.push_back(root.handle);
        root.set("ACAD_PLOTSTYLENAME", names.handle);
        RawObject& normal = m_document.addObject(makeRaw("ACDBPLACEHOLDER", {}), names.handle);
        normal.reactors.push_back(names.handle);
        const std::string handle = formatHandle(normal.handle);
        names.kept = {{"AcDbDictionary", {{281, "1"}, {3, "Normal"}, {350, handle}}},
                      {"AcDbDictionaryWithDefault", {{340, handle}}}};
        for (const Handle layer : m_document.table("LAYER").records) {
            m_document.find<Layer>(layer)->plotStyle = normal.handle;
        }
    }
}

void DocumentBuilder::completeMultilineStyle()
{
    Dictionary& styles = obtainDictionary("ACAD_MLINESTYLE");
    if (styles.find("Standard") == 0) {
        Groups groups{{2, "Standard"}};
        groups.insert(groups.end(), defaultMultilineGroups().begin(), defaultMultilineGroups().end());
        RawObject& style = m_document.addObject(makeRaw("MLINESTYLE", {{"AcDbMlineStyle", groups}}), styles.handle);
        style.reactors.push_back(styles.handle);
        styles.set("Standard", style.handle);
    }
}

namespace {

/// Names for new layouts.
class LayoutNames
{
public:
    explicit LayoutNames(const Dictionary& layouts)
    {
        for (const Dictionary::Entry& entry : layouts.entries) {
            m_taken.insert(lowerCase(entry.key));
        }
    }

    std::string next()
    {
        while (m_taken.contains("layout" + std::to_string(++m_number))) {
        }
        return "Layout" + std::to_string(m_number);
    }

private:
    std::unordered_set<std::string> m_taken; // in lower case
    int m_number = 0;
};

} // namespace

void DocumentBuilder::completeLayout(Block& block, Dictionary& layouts, const std::string& name)
{
    const bool model = block.handle == m_document.m_modelSpace;
    Groups plot = defaultPlotGroups();
    constexpr int modelPlot = 1024;
    plot.push_back({70, std::to_string(model ? modelPlot : 0)});
    Groups groups{{1, name}, {70, "1"}, {71, std::to_string(model ? 0 : layouts.entries.size() + 1)}};
    groups.insert(groups.end(), defaultLayoutGroups().begin(), defaultLayoutGroups().end());
    groups.push_back({330, formatHandle(block.handle)});
    RawObject& layout =
        m_document.addObject(makeRaw("LAYOUT", {{"AcDbPlotSettings", plot}, {"AcDbLayout", groups}}), layouts.handle);
    layout.reactors.push_back(layouts.handle);
    if (model) {
        layouts.set(name, layout.handle);
    } else {
        layouts.entries.push_back({name, layout.handle}); // as the name is free
    }
    block.layout = layout.handle;
}

// Each space has a layout, which is a tab of the host's window.
void DocumentBuilder::completeLayouts()
{
    Dictionary& layouts = obtainDictionary("ACAD_LAYOUT");
    LayoutNames names(layouts);
    for (const Handle handle : m_document.table("BLOCK_RECORD").records) {
        auto& block = *m_document.find<Block>(handle);
        const bool model = block.handle == m_document.m_modelSpace;
        if (isSpaceName(block.recordName) && !m_document.find(block.layout)) {
            completeLayout(block, layouts, model ? "Model" : names.next());
        }
    }
}

void DocumentBuilder::completeHeader()
{
    for (const DefaultVariable& variable : defaultHeader()) {
        if (!m_document.header.has(variable.name)) {
            m_document.header.setGroups(variable.name, variable.groups);
        }
    }
}

Document DocumentBuilder::complete()
{
    completeTables();
    completeRecords();
    completeBlocks();
    completeRoot();
    completeImages();
    obtainDictionary("ACAD_GROUP");
    completeLayouts();
    completeMultilineStyle();
    obtainDictionary("ACAD_PLOTSETTINGS");
    completePlotStyles();
    completeHeader();
    return std::move(m_document);
}

} // namespace drawing
