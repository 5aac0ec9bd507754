#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "drawing/flatten.h"
#include "drawing/hatch.h"
#include "drawing/text_layout.h"

namespace drawing {

/// One run through a block's entities.
class Flattener
{
public:
    Flattener(const Document& document, const FlattenOptions& options, const FlatSink& sink);

    /// Both return false if something was left out.
    bool block(const Block& block);
    bool entity(const Entity& entity);

private:
    /// What pieces inside a block reference take from it.
    struct Inherited
    {
        bool nested = false;
        std::string layer = "0";
        int color = 7;
        std::optional<Rgb> rgb;
        std::string linetype = "Continuous";
        int lineweight = -3;
    };
    /// Where we are: the map to the drawing, and what is inherited.
    struct Place
    {
        Transform map;
        Inherited inherited;
    };

    /// What a path is drawn with: its own linetype, or none.
    enum class Linetype
    {
        Own,
        Continuous,
    };

    void content(const Block& block, const Place& place);
    void any(const Entity& entity, const Place& place);
    void shape(const Entity& entity, const Place& place);
    void curve(const Entity& entity, const Place& place);
    void round(const Entity& entity, const Place& place);
    void lightPolyline(const LightPolyline& polyline, const Place& place);
    void reference(const BlockReference& reference, const Place& place);
    void attributes(const BlockReference& reference, const Place& place);
    void dimension(const Dimension& dimension, const Place& place);
    void viewport(const Viewport& viewport, const Place& place);
    void spline(const Spline& spline, const Place& place);
    void hatch(const Hatch& hatch, const Place& place);
    void face(const Face& face, const Place& place);
    void point(const Point& point, const Place& place);
    double pointSize() const;
    void endlessLine(const EndlessLine& line, const Place& place);
    std::optional<Extents> window() const;
    void leader(const Leader& leader, const Place& place);
    double dimensionValue(const Leader& leader, int code, std::string_view variable, double usual) const;
    double arrowSize(const Leader& leader) const;
    void arrowHead(const Leader& leader, const Vector3& tip, const Vector3& back, double size, const Place& place);
    void heavyPolyline(const HeavyPolyline& polyline, const Place& place);
    void mesh(const HeavyPolyline& polyline, const std::vector<const Vertex*>& vertices, const Place& place);
    void faces(const std::vector<const Vertex*>& vertices, const HeavyPolyline& polyline, const Place& place);
    void text(const Text& text, const std::string& shown, const Place& place);
    void mtext(const MText& text, const Place& place);
    void image(const Image& image, const Place& place);
    void emitText(const Entity& entity, const RichText& text, const TextFrame& frame, const Place& place);
    static std::optional<TextFrame> textFrame(const Vector3& position, const Vector3& direction, const Vector3& up,
                                              const Place& place);
    TextFormat textFormat(const std::string& styleName, double height) const;
    void emit(const Entity& entity, FlatShape shape, const Place& place, Linetype linetype = Linetype::Own);
    void emit(FlatStyle style, FlatShape shape);

    const std::string& layerName(const Entity& entity, const Inherited& inherited) const;
    FlatStyle styleOf(const Entity& entity, const Inherited& inherited) const;
    void setColor(FlatStyle& style, int color, std::optional<std::uint32_t> trueColor,
                  const Inherited& inherited) const;
    bool shown(const Entity& entity, const Inherited& inherited) const;
    const Layer* findLayer(const std::string& name) const;
    const Block* findBlock(const std::string& name) const;
    const TextStyle* findStyle(const std::string& name) const;
    DashPattern dashesOf(const FlatStyle& style) const;
    bool spend(std::size_t points);

    using Names = std::map<std::string, const TableRecord*>;
    Names namesOf(std::string_view kind) const;

    const Document& m_document;
    const FlattenOptions& m_options;
    const FlatSink& m_sink;
    Names m_layers;
    Names m_blocks;
    Names m_styles;
    Names m_linetypes;
    double m_linetypeScale;
    std::vector<const Block*> m_open;
    Handle m_entity = 0;
    std::optional<Extents> m_clip;      // of the viewport whose content is drawn
    double m_viewScale = 1;             // of that viewport
    std::set<std::string> m_frozenHere; // layers that it does not show, in lower case
    std::size_t m_points = 0;
    bool m_complete = true;
};

} // namespace drawing
