// The objects that raster images in a drawing rest on.

#include <algorithm>

#include "drawing/document.h"

namespace drawing {

namespace {

constexpr std::string_view imageDictionaryName = "ACAD_IMAGE_DICT";
constexpr std::string_view imageVariables = "ACAD_IMAGE_VARS";

} // namespace

const Dictionary* Document::imageDictionary() const
{
    return find<Dictionary>(rootDictionary().find(imageDictionaryName));
}

Dictionary* Document::imageDictionary()
{
    return find<Dictionary>(rootDictionary().find(imageDictionaryName));
}

Dictionary& Document::obtainImageDictionary()
{
    if (Dictionary* present = imageDictionary()) {
        return *present;
    }
    Dictionary& root = rootDictionary();
    Dictionary& made = addObject(std::make_unique<Dictionary>(), root.handle);
    made.reactors.push_back(root.handle);
    root.set(imageDictionaryName, made.handle);
    return made;
}

const RasterVariables* Document::rasterVariables() const
{
    return find<RasterVariables>(rootDictionary().find(imageVariables));
}

RasterVariables* Document::rasterVariables()
{
    return find<RasterVariables>(rootDictionary().find(imageVariables));
}

RasterVariables& Document::obtainRasterVariables()
{
    if (RasterVariables* present = rasterVariables()) {
        return *present;
    }
    Dictionary& root = rootDictionary();
    RasterVariables& made = addObject(std::make_unique<RasterVariables>(), root.handle);
    made.reactors.push_back(root.handle);
    root.set(imageVariables, made.handle);
    return made;
}

ImageDefinition& Document::addImageDefinition(std::string_view name, std::unique_ptr<ImageDefinition> definition)
{
    Dictionary& dictionary = obtainImageDictionary();
    if (dictionary.find(name) != 0) {
        throw DrawingError("there is an image named \"" + std::string(name) + "\" already");
    }
    ImageDefinition& added = addObject(std::move(definition), dictionary.handle);
    added.reactors.insert(added.reactors.begin(), dictionary.handle);
    dictionary.set(name, added.handle);
    return added;
}

void Document::attachDefinition(Image& image, ImageDefinition& definition)
{
    if (auto* former = find<ImageDefinition>(image.definition)) {
        std::erase(former->reactors, image.definitionReactor);
    }
    auto* reactor = find<ImageDefinitionReactor>(image.definitionReactor);
    if (!reactor) {
        reactor = &addObject(std::make_unique<ImageDefinitionReactor>(), image.handle);
        reactor->image = image.handle;
    }
    image.definition = definition.handle;
    image.definitionReactor = reactor->handle;
    definition.reactors.push_back(reactor->handle);
}

} // namespace drawing
