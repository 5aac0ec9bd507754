#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drawing/entities.h"
#include "drawing/error.h"
#include "drawing/header_variables.h"
#include "drawing/object.h"
#include "drawing/objects.h"
#include "drawing/tables.h"

namespace drawing {

/// A drawing. It owns all its objects; pointers and references to them hold until the object is erased, whatever else
/// is added or erased. Objects refer to each other by handle. Fields may be changed at any time through the pointers;
/// handles, owners and the lists of blocks and tables are changed through the functions here.
class Document
{
public:
    static constexpr std::size_t atEnd = std::numeric_limits<std::size_t>::max();

    /// An empty drawing, metric, complete: layer 0, model and paper space with their layouts, standard styles.
    Document();
    Document(Document&&) noexcept;
    Document& operator=(Document&&) noexcept;
    ~Document();

    // Objects

    /// Null if there is no such object.
    Object* find(Handle handle);
    const Object* find(Handle handle) const;
    /// Null if there is no such object or it is of another class.
    template <class T> T* find(Handle handle) { return dynamic_cast<T*>(find(handle)); }
    template <class T> const T* find(Handle handle) const { return dynamic_cast<const T*>(find(handle)); }

    /// The handle that the next new object gets; above every handle in use.
    Handle handleSeed() const { return m_handleSeed; }
    /// Throws DrawingError where no handle is left above.
    void raiseHandleSeed(Handle atLeast);

    /// Adds an object of no table and no block (dictionary, image definition, ...). A handle of 0 is replaced by a new
    /// one; a handle in use throws DrawingError. The caller enters it in the dictionary that is to hold it.
    template <class T> T& addObject(std::unique_ptr<T> object, Handle owner)
    {
        T& added = *object;
        insertObject(std::move(object), owner);
        return added;
    }

    /// Adds an entity to a block's list: at the end (drawn last, on top) or before `position`.
    template <class T> T& addEntity(Block& block, std::unique_ptr<T> entity, std::size_t position = atEnd)
    {
        T& added = *entity;
        insertEntity(block, std::move(entity), position);
        return added;
    }

    /// Adds a vertex or an attribute to its polyline or block reference, at the end.
    Vertex& addVertex(HeavyPolyline& polyline, std::unique_ptr<Vertex> vertex);
    Attribute& addAttribute(BlockReference& reference, std::unique_ptr<Attribute> attribute);

    /// Adds a layer, a style, ... to its table. The name must be free (DrawingError).
    template <class T> T& addRecord(std::unique_ptr<T> record)
    {
        T& added = *record;
        insertRecord(std::move(record));
        return added;
    }
    /// Adds an empty block of that name, with its brackets.
    Block& addBlock(std::string_view name);

    /// A place in the list of objects.
    struct Place
    {
        Handle object = 0;
        std::size_t position = 0;
    };
    /// What `erase` took out, as `restore` needs it.
    struct Erased
    {
        std::unique_ptr<Object> object;
        // Vertices, attributes, brackets, the entities of a block, and what lies in extension dictionaries.
        std::vector<std::unique_ptr<Object>> parts;
        std::size_t position = 0;  // in the list of its block, table, or the objects
        std::vector<Place> listed; // the parts among the objects
    };
    /// Takes an object with its parts out of the drawing and out of the list of its block, table or owning entity.
    /// References to it from other objects and dictionaries stay as they are. Throws DrawingError if there is none.
    Erased erase(Handle handle);
    /// Puts back what was taken out, with its handle and at its place.
    Object& restore(Erased erased);

    // Blocks and entities

    Block& modelSpace();
    const Block& modelSpace() const;
    /// The paper space whose entities stand in the file's entity section.
    Block& paperSpace();
    const Block& paperSpace() const;
    /// A block's entities as they are drawn, the lowest first: in list order, unless the drawing holds an order of its
    /// own.
    std::vector<Entity*> drawOrder(const Block& block);
    std::vector<const Entity*> drawOrder(const Block& block) const;

    // Tables; a name is found without regard to case, null if there is none

    /// Their handles, in the file's order.
    const std::vector<Handle>& tables() const { return m_tables; }
    Table& table(std::string_view kind);
    const Table& table(std::string_view kind) const;
    TableRecord* findRecord(std::string_view kind, std::string_view name);
    const TableRecord* findRecord(std::string_view kind, std::string_view name) const;
    Layer* findLayer(std::string_view name);
    const Layer* findLayer(std::string_view name) const;
    const Linetype* findLinetype(std::string_view name) const;
    const TextStyle* findTextStyle(std::string_view name) const;
    Block* findBlock(std::string_view name);
    const Block* findBlock(std::string_view name) const;
    /// The view that is shown on opening.
    ViewportRecord& activeViewport();

    // Dictionaries and images

    /// The named object dictionary, root of all others.
    Dictionary& rootDictionary();
    const Dictionary& rootDictionary() const;
    /// The dictionary of image definitions (ACAD_IMAGE_DICT); null if there is none.
    Dictionary* imageDictionary();
    const Dictionary* imageDictionary() const;
    Dictionary& obtainImageDictionary();
    /// The settings for all images (ACAD_IMAGE_VARS); null if there are none.
    RasterVariables* rasterVariables();
    const RasterVariables* rasterVariables() const;
    RasterVariables& obtainRasterVariables();
    /// Adds a definition under that name in the image dictionary, made where it is missing. The name must be free.
    ImageDefinition& addImageDefinition(std::string_view name, std::unique_ptr<ImageDefinition> definition);
    /// Makes `image` show `definition`, with the reactor that ties them; a former definition is let go.
    void attachDefinition(Image& image, ImageDefinition& definition);

    // The rest

    HeaderVariables header;
    /// Objects of no table and no block, in the file's order; the root dictionary is the first.
    const std::vector<Handle>& objects() const { return m_objects; }

    /// Records of the file's CLASSES section.
    std::vector<Groups> classes;
    /// Whole sections of the file that are carried along unread (THUMBNAILIMAGE, ...).
    struct RawSection
    {
        std::string name;
        Groups groups;
        bool operator==(const RawSection&) const = default;
    };
    std::vector<RawSection> rawSections;

private:
    friend class DocumentBuilder;
    struct Bare
    {};
    explicit Document(Bare); // nothing in it at all: for the reader

    void insertObject(std::unique_ptr<Object> object, Handle owner);
    void insertEntity(Block& block, std::unique_ptr<Entity> entity, std::size_t position);
    void insertRecord(std::unique_ptr<TableRecord> record);
    Object& store(std::unique_ptr<Object> object);
    std::vector<Handle>* listOf(const Object& object);
    std::vector<Handle> partsOf(const Object& object) const;
    std::vector<Handle> extensionsOf(const std::vector<Handle>& holders) const;
    std::vector<Place> unlist(const std::vector<Handle>& handles);
    void relist(const std::vector<Place>& places);
    void tieReactor(const Object& object, bool tie);
    std::unique_ptr<Object> takeOut(Handle handle);

    std::unordered_map<Handle, std::unique_ptr<Object>> m_byHandle;
    std::vector<Handle> m_tables;
    std::vector<Handle> m_objects;
    Handle m_handleSeed = 1;
    Handle m_modelSpace = 0;
    Handle m_paperSpace = 0;
};

/// The name of the code page that the drawing's files are to be in: its own ($DWGCODEPAGE), or its like on Windows,
/// which other programs know.
std::string windowsCodePageName(const Document& document);

/// True if the names are the same but for the case of ASCII letters.
bool sameName(std::string_view a, std::string_view b);

/// True of the names of blocks that are spaces: the model space and the paper spaces.
bool isSpaceName(std::string_view blockName);

} // namespace drawing
