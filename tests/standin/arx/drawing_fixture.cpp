#include "tests/standin/arx/drawing_fixture.h"

DrawingTest::DrawingTest()
{
    standin::setDeskServices(&desk);
    standin::clearBreaches();
    standin::newDrawing();
}

DrawingTest::~DrawingTest()
{
    standin::closeDrawing();
    standin::setDeskServices(nullptr);
}

std::filesystem::path DrawingTest::writeRaster(const std::filesystem::path& name, const imaging::Bitmap& bitmap,
                                               double dotsPerInch)
{
    const std::filesystem::path path = folder / name;
    std::filesystem::create_directories(path.parent_path());
    imaging::writeRaster(path, bitmap, {dotsPerInch, dotsPerInch}, imaging::Format::TiffGroup4);
    return path;
}

standin::Handle DrawingTest::addImage(const std::string& path, drawing::Vector3 origin, drawing::Vector3 u,
                                      drawing::Vector3 v)
{
    drawing::Document& document = standin::document();
    auto definition = std::make_unique<drawing::ImageDefinition>();
    definition->path = path;
    definition->pixels = {4, 2};
    const auto* dictionary = document.imageDictionary();
    const std::string name = "image" + std::to_string(dictionary ? dictionary->entries.size() : 0);
    drawing::ImageDefinition& added = document.addImageDefinition(name, std::move(definition));
    drawing::Image& image = document.addEntity(document.modelSpace(), std::make_unique<drawing::Image>());
    image.position = origin;
    image.u = u;
    image.v = v;
    image.pixels = {4, 2};
    image.resetClip();
    document.attachDefinition(image, added);
    return image.handle;
}

standin::Handle DrawingTest::addLine()
{
    drawing::Document& document = standin::document();
    return document.addEntity(document.modelSpace(), std::make_unique<drawing::Line>()).handle;
}

// By the road that modules take: the name in a selection of everything.
AcDbObjectId DrawingTest::idOf(standin::Handle handle)
{
    AcDbObjectId id;
    ads_name set;
    if (acedSSGet(L"X", nullptr, nullptr, nullptr, set) != RTNORM)
        return id;
    Adesk::Int32 length = 0;
    acedSSLength(set, &length);
    for (Adesk::Int32 i = 0; i < length && id.handle() != handle; ++i) {
        ads_name name;
        acedSSName(set, i, name);
        acdbGetObjectId(id, name);
    }
    acedSSFree(set);
    EXPECT_EQ(id.handle(), handle) << "the entity is not in the drawing";
    return id;
}

AcDbRasterImageDef* DrawingTest::openDefinition(standin::Handle image, AcDb::OpenMode mode)
{
    auto* entity = open<AcDbRasterImage>(idOf(image), AcDb::kForRead);
    const AcDbObjectId definition = entity->imageDefId();
    entity->close();
    return open<AcDbRasterImageDef>(definition, mode);
}
