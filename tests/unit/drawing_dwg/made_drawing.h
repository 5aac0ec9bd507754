// A drawing with one of every kind, and files as plain bytes.
#pragma once

#include <memory>
#include <string>

#include "drawing/drawing_file.h"
#include "tests/support/drawings.h"

namespace drawing::test {

inline Image& addImage(Document& document, const char* path)
{
    auto made = std::make_unique<ImageDefinition>();
    made->path = path;
    made->pixels = {2000, 1400};
    made->pixelSize = {0.0635, 0.0635};
    made->units = ImageDefinition::Units::Inch;
    auto& definition = document.addImageDefinition("sheet", std::move(made));
    auto& image = add<Image>(document, document.modelSpace());
    image.position = {100, 200, 0};
    image.u = {0.0635, 0, 0};
    image.v = {0, 0.0635, 0};
    image.pixels = {2000, 1400};
    image.resetClip();
    document.attachDefinition(image, definition);
    document.obtainRasterVariables();
    return image;
}

inline Document makeDrawing()
{
    Document document;
    Block& model = document.modelSpace();
    addLineOnLayer(document);
    auto& heavy = add<HeavyPolyline>(document, model);
    document.addVertex(heavy, std::make_unique<Vertex>()).position = {1, 2, 0};
    document.addVertex(heavy, std::make_unique<Vertex>()).position = {3, 4, 0};
    Block& door = document.addBlock("DOOR");
    add<Line>(document, door).end = {1, 0, 0};
    auto& reference = add<BlockReference>(document, model);
    reference.block = "DOOR";
    auto& attribute = document.addAttribute(reference, std::make_unique<Attribute>());
    attribute.tag = "NUMBER";
    attribute.text = "Größe 42";
    attribute.height = 1;
    auto& text = add<Text>(document, model);
    text.text = "Größe 5";
    text.height = 2;
    text.layer = "of no table";
    add<Viewport>(document, document.paperSpace()).number = Viewport::sheetNumber;
    add<Viewport>(document, document.paperSpace());
    addImage(document, "C:\\Scans\\sheet.tif");
    return document;
}

inline std::string dwgOf(const Document& document)
{
    return writeDrawingBytes(document, DrawingForm::Dwg);
}

inline unsigned long numberAt(const std::string& bytes, std::size_t place, std::size_t size)
{
    unsigned long value = 0;
    for (std::size_t i = size; i-- > 0;) {
        value = value << 8 | static_cast<unsigned char>(bytes.at(place + i));
    }
    return value;
}

/// Behind the classes and four bytes of no other meaning.
inline std::size_t beginOfObjects(const std::string& file)
{
    return numberAt(file, 0x23, 4) + numberAt(file, 0x27, 4) + 4;
}

/// The checksum, one bit after the other.
inline unsigned slowChecksum(const std::string& bytes)
{
    unsigned value = 0xC0C1;
    for (const char each : bytes) {
        value ^= static_cast<unsigned char>(each);
        for (int bit = 0; bit < 8; ++bit) {
            value = value & 1 ? value >> 1 ^ 0xA001 : value >> 1;
        }
    }
    return value;
}

} // namespace drawing::test
