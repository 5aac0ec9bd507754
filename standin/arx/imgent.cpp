#include "standin/arx/imgent.h"

#include "standin/arx/edit_log.h"
#include "standin/arx/image_entities.h"
#include "standin/arx/imgdef.h"
#include "standin/arx/object_store.h"
#include "standin/arx/rx_define.h"

ACRX_DEFINE_MEMBERS(AcDbRasterImage, AcDbEntity)

namespace standin {

namespace {

// Clip points count from the centre of the top left pixel.
void stretch(drawing::Image& image, drawing::Vector2 pixels)
{
    const double across = image.pixels.x / pixels.x;
    const double along = image.pixels.y / pixels.y;
    image.u = image.u * across;
    image.v = image.v * along;
    for (drawing::Vector2& corner : image.clip)
        corner = {(corner.x + 0.5) / across - 0.5, (corner.y + 0.5) / along - 0.5};
}

void resize(drawing::Image& image, drawing::Vector2 pixels, Keep keep)
{
    drawing::Image whole = image;
    whole.resetClip();
    const bool clipIsWhole = image.clip.empty() || image.clip == whole.clip;
    if (keep == Keep::edges && image.pixels.x > 0 && image.pixels.y > 0)
        stretch(image, pixels);
    image.pixels = pixels;
    if (clipIsWhole)
        image.resetClip();
}

} // namespace

void resizeImageEntities(AcDbDatabase& database, drawing::Handle definition, drawing::Vector2 pixels, Keep keep)
{
    const auto follow = [&](drawing::Object* object) {
        auto* image = dynamic_cast<drawing::Image*>(object);
        if (image && image->definition == definition && image->pixels != pixels)
            resize(*image, pixels, keep);
    };
    drawing::Document& document = database.state().document;
    for (const drawing::Handle record : document.table("BLOCK_RECORD").records) {
        if (const auto* block = document.find<drawing::Block>(record)) {
            for (const drawing::Handle entity : block->entities)
                follow(document.find(entity));
        }
    }
    for (const auto& [handle, slot] : database.state().slots) {
        if (slot->erased)
            follow(slot->erased->object.get());
    }
}

} // namespace standin

namespace {

AcGeVector3d vectorOf(const drawing::Vector3& v)
{
    return {v.x, v.y, v.z};
}

drawing::Vector3 recordVector(const AcGeVector3d& v)
{
    return {v.x, v.y, v.z};
}

// By now the image's own record may have another number of pixels.
void followFile(AcDbDatabase& database, drawing::Handle definition)
{
    standin::ObjectSlot* slot = standin::idOf(database, definition).slot();
    if (auto* followed = slot ? dynamic_cast<AcDbRasterImageDef*>(standin::objectOf(*slot)) : nullptr)
        followed->followFile();
}

} // namespace

drawing::Image& AcDbRasterImage::record() const
{
    auto* record = standin::recordOf<drawing::Image>(objectId());
    return record ? *record : *m_alone;
}

AcDbRasterImage::AcDbRasterImage() : m_alone(std::make_unique<drawing::Image>()) {}

AcDbRasterImage::~AcDbRasterImage() = default;

AcDbObjectId AcDbRasterImage::imageDefId() const
{
    assertReadEnabled("imageDefId");
    AcDbDatabase* owner = database();
    return owner ? standin::idOf(*owner, record().definition) : AcDbObjectId();
}

AcGeVector2d AcDbRasterImage::imageSize() const
{
    assertReadEnabled("imageSize");
    const drawing::Image& image = record();
    if (!database())
        return {image.pixels.x, image.pixels.y};
    followFile(*database(), image.definition);
    const auto* definition = database()->state().document.find<drawing::ImageDefinition>(image.definition);
    const bool known = image.pixels.x > 0 && image.pixels.y > 0;
    const drawing::Vector2 pixels = known || !definition ? image.pixels : definition->pixels;
    return {pixels.x, pixels.y};
}

void AcDbRasterImage::getOrientation(AcGePoint3d& origin, AcGeVector3d& u, AcGeVector3d& v) const
{
    assertReadEnabled("getOrientation");
    const drawing::Image& image = record();
    const AcGeVector2d pixels = imageSize();
    origin.set(image.position.x, image.position.y, image.position.z);
    u = vectorOf(image.u) * pixels.x;
    v = vectorOf(image.v) * pixels.y;
}

Adesk::Boolean AcDbRasterImage::setOrientation(const AcGePoint3d& origin, const AcGeVector3d& u, const AcGeVector3d& v)
{
    const AcGeVector2d pixels = imageSize();
    const bool usable = u.length() > 0 && v.length() > 0 && pixels.x > 0 && pixels.y > 0;
    if (assertWriteEnabled("setOrientation") != Acad::eOk || !usable)
        return false;
    drawing::Image& image = record();
    standin::noteRasterChange(database(), image.definition);
    const drawing::Image before = image;
    image.position = {origin.x, origin.y, origin.z};
    image.u = recordVector(u / pixels.x);
    image.v = recordVector(v / pixels.y);
    if (image.position != before.position || image.u != before.u || image.v != before.v)
        setModified();
    return true;
}

// With u and v of one pixel, the centre of the pixel (x, y) is origin + u (x + 0.5) + v (height - 0.5 - y).
Acad::ErrorStatus AcDbRasterImage::getPixelToModelTransform(AcGeMatrix3d& matrix) const
{
    const Acad::ErrorStatus status = assertReadEnabled("getPixelToModelTransform");
    if (status != Acad::eOk)
        return status;
    const double height = imageSize().y;
    const drawing::Image& image = record();
    const AcGeVector3d u = vectorOf(image.u);
    const AcGeVector3d v = vectorOf(image.v);
    const AcGePoint3d corner(image.position.x, image.position.y, image.position.z);
    matrix.setCoordSystem(corner + u * 0.5 + v * (height - 0.5), u, -v, u.crossProduct(-v).normal());
    return Acad::eOk;
}

void AcDbRasterImage::setDisplayOpt(ImageDisplayOpt option, Adesk::Boolean value)
{
    if (assertWriteEnabled("setDisplayOpt") != Acad::eOk)
        return;
    standin::noteRasterChange(database(), record().definition);
    int& display = record().display;
    const int before = display;
    display = value ? display | option : display & ~option;
    if (display != before)
        setModified();
}

Adesk::Boolean AcDbRasterImage::isSetDisplayOpt(ImageDisplayOpt option) const
{
    assertReadEnabled("isSetDisplayOpt");
    return (record().display & option) != 0;
}
