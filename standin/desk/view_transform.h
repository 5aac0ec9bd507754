#pragma once

#include "imaging/geometry.h"
#include "standin/desk/vec2.h"

namespace desk {

/// What part of the drawing the view shows: a plan view without twist.
/// View space is client pixels, y down; a pixel's centre lies at its integer coordinates, as the host's users of
/// "viewctr", "viewsize" and "screensize" reckon. Drawing space is drawing units, y up.
class ViewTransform
{
public:
    Vec2 centre() const { return m_centre; }
    /// Height of the view in drawing units.
    double height() const { return m_height; }
    imaging::Size client() const { return m_client; }
    /// Drawing units per view pixel.
    double unitsPerPixel() const { return m_height / m_client.height; }

    Vec2 toView(Vec2 drawing) const;
    Vec2 toDrawing(Vec2 view) const;
    /// The part of the drawing under the whole client area.
    Box visible() const;

    /// Keeps the centre and the scale, so that the drawing stays where it is relative to the view's middle.
    /// A client area without height or width is taken as one pixel.
    void resize(imaging::Size client);
    /// Ignored unless height is positive and finite and the scale stays within what doubles can tell apart.
    void set(Vec2 centre, double height);
    /// factor > 1 magnifies; the drawing point under `view` stays there.
    void zoomAbout(Vec2 view, double factor);
    /// Moves the drawing by whole pixels, so that a picture of the old view can be shifted and used again.
    void pan(int dx, int dy);
    /// Shows the whole box with a margin, a share of the view's size. An empty box changes nothing.
    void fit(const Box& box, double margin);

    friend bool operator==(const ViewTransform& a, const ViewTransform& b)
    {
        return a.m_centre == b.m_centre && a.m_height == b.m_height && a.m_client == b.m_client;
    }

private:
    Vec2 m_centre{0, 0};
    double m_height = 297;
    imaging::Size m_client{1, 1};
};

} // namespace desk
