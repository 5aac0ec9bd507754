#include "drawing/object_factory.h"

#include "drawing/hatch.h"

namespace drawing {

namespace {

template <class Base> struct Maker
{
    std::string_view name;
    std::unique_ptr<Base> (*make)();
};

template <class Base, class Made> std::unique_ptr<Base> make()
{
    return std::make_unique<Made>();
}

std::unique_ptr<Entity> makeTrace()
{
    auto trace = std::make_unique<Solid>();
    trace->isTrace = true;
    return trace;
}

std::unique_ptr<Entity> makeConstructionLine()
{
    return std::make_unique<EndlessLine>(true);
}

constexpr Maker<Entity> entityMakers[] = {
    {"LINE", make<Entity, Line>},
    {"POINT", make<Entity, Point>},
    {"CIRCLE", make<Entity, Circle>},
    {"ARC", make<Entity, Arc>},
    {"ELLIPSE", make<Entity, Ellipse>},
    {"LWPOLYLINE", make<Entity, LightPolyline>},
    {"POLYLINE", make<Entity, HeavyPolyline>},
    {"VERTEX", make<Entity, Vertex>},
    {"SEQEND", make<Entity, SequenceEnd>},
    {"SOLID", make<Entity, Solid>},
    {"TRACE", makeTrace},
    {"TEXT", make<Entity, Text>},
    {"ATTRIB", make<Entity, Attribute>},
    {"ATTDEF", make<Entity, AttributeDefinition>},
    {"MTEXT", make<Entity, MText>},
    {"INSERT", make<Entity, BlockReference>},
    {"IMAGE", make<Entity, Image>},
    {"3DFACE", make<Entity, Face>},
    {"RAY", make<Entity, EndlessLine>},
    {"XLINE", makeConstructionLine},
    {"SPLINE", make<Entity, Spline>},
    {"HATCH", make<Entity, Hatch>},
    {"LEADER", make<Entity, Leader>},
    {"DIMENSION", make<Entity, Dimension>},
    {"VIEWPORT", make<Entity, Viewport>},
};

constexpr Maker<TableRecord> tableRecords[] = {
    {"LAYER", make<TableRecord, Layer>},        {"LTYPE", make<TableRecord, Linetype>},
    {"STYLE", make<TableRecord, TextStyle>},    {"VPORT", make<TableRecord, ViewportRecord>},
    {"BLOCK_RECORD", make<TableRecord, Block>},
};

constexpr Maker<Object> objectMakers[] = {
    {"DICTIONARY", make<Object, Dictionary>},
    {"IMAGEDEF", make<Object, ImageDefinition>},
    {"IMAGEDEF_REACTOR", make<Object, ImageDefinitionReactor>},
    {"RASTERVARIABLES", make<Object, RasterVariables>},
};

template <class Raw, class Base, std::size_t Count>
std::unique_ptr<Base> makeByName(const Maker<Base> (&makers)[Count], std::string_view name)
{
    for (const Maker<Base>& maker : makers) {
        if (maker.name == name) {
            return maker.make();
        }
    }
    return std::make_unique<Raw>(std::string(name));
}

} // namespace

std::unique_ptr<Entity> makeEntity(std::string_view name)
{
    return makeByName<RawEntity>(entityMakers, name);
}

std::unique_ptr<TableRecord> makeTableRecord(std::string_view name)
{
    return makeByName<RawTableRecord>(tableRecords, name);
}

std::unique_ptr<Object> makeObject(std::string_view name)
{
    return makeByName<RawObject>(objectMakers, name);
}

} // namespace drawing
