#include "drawing/dwg/common_fields.h"

#include "drawing/dwg/hexadecimal.h"
#include "drawing/dwg/lineweights.h"
#include "drawing/entities.h"
#include "drawing/lower_case.h"

namespace drawing::dwg {

namespace {

enum LinetypeForm
{
    linetypeByLayer = 0,
    linetypeByBlock = 1,
    linetypeContinuous = 2,
    linetypeByHandle = 3,
};

int reactorCount(ObjectFields& f, const Ties& ties)
{
    auto count = static_cast<int>(ties.reactors.size());
    f.bits.handleCount(count);
    return count;
}

void reactorHandles(ObjectFields& f, Ties& ties, int count)
{
    ties.reactors.resize(static_cast<std::size_t>(count));
    for (Handle& reactor : ties.reactors) {
        f.bits.handle(reactor, Reference::SoftPointer);
    }
    f.bits.handle(ties.extensionDictionary, Reference::HardOwner);
}

// The picture of an entity that the host's own program for its kind has made.
void graphics(ObjectFields& f)
{
    std::string picture;
    for (const PlacedGroup& chunk : f.takeAll({310})) {
        picture += bytesOfHexadecimal(chunk.value);
    }
    bool present = !picture.empty();
    f.bits.bit(present);
    if (!present) {
        return;
    }
    constexpr unsigned bitsOfByte = 8;
    auto size = static_cast<int>(picture.size());
    f.bits.rawLongCount(size, bitsOfByte);
    f.bits.bytes(picture, static_cast<std::size_t>(size));
    constexpr std::size_t chunkBytes = 127;
    f.give(92, size);
    for (std::size_t begin = 0; begin < picture.size(); begin += chunkBytes) {
        f.give(310, hexadecimal(std::string_view(picture).substr(begin, chunkBytes)));
    }
}

int linetypeForm(const std::string& name)
{
    const std::string lower = lowerCase(name);
    return lower == "bylayer"      ? linetypeByLayer
           : lower == "byblock"    ? linetypeByBlock
           : lower == "continuous" ? linetypeContinuous
                                   : linetypeByHandle;
}

std::string linetypeName(ObjectFields& f, int form, Handle handle)
{
    constexpr const char* fixed[] = {"ByLayer", "ByBlock", "Continuous"};
    return form == linetypeByHandle ? f.names.nameOf(handle) : fixed[form];
}

} // namespace

void objectCommon(ObjectFields& f, Ties& ties)
{
    const int count = reactorCount(f, ties);
    f.bits.handle(ties.owner, Reference::SoftPointer);
    reactorHandles(f, ties, count);
}

void entityCommon(ObjectFields& f, Ties& ties)
{
    f.marker(entityMarker);
    graphics(f);
    f.bits.bits(ties.space, 2);
    const int reactors = reactorCount(f, ties);
    f.bits.bit(ties.neighboursAdjacent);

    std::string layer = "0";
    std::string linetype = "ByLayer";
    Handle plotStyle = 0;
    int weight = -1;
    f.take(8, layer);
    f.take(6, linetype);
    f.takeHandle(390, plotStyle);
    f.take(370, weight);
    int linetypeKind = linetypeForm(linetype);
    constexpr int styleByHandle = 3;
    int plotStyleKind = plotStyle != 0 ? styleByHandle : 0;
    f.give(67, ties.space == paperSpace ? 1 : 0);
    f.shortNumber(62, colorByLayer);
    f.real(48, 1.0);
    f.bits.bits(linetypeKind, 2);
    f.bits.bits(plotStyleKind, 2);
    f.shortNumber(60, 0);
    int weightNumber = lineweightNumber(weight);
    f.bits.byte(weightNumber);
    weight = lineweightOf(weightNumber);

    if (ties.space == ownerSaid) {
        f.bits.handle(ties.owner, Reference::SoftPointer);
    }
    reactorHandles(f, ties, reactors);
    if (!ties.neighboursAdjacent) {
        f.bits.handle(ties.previous, Reference::SoftPointer);
        f.bits.handle(ties.next, Reference::SoftPointer);
    }
    Handle layerHandle = f.reading() ? 0 : f.names.obtain("LAYER", layer);
    f.bits.handle(layerHandle, Reference::HardPointer);
    Handle linetypeHandle = f.reading() || linetypeKind != linetypeByHandle ? 0 : f.names.obtain("LTYPE", linetype);
    if (linetypeKind == linetypeByHandle) {
        f.bits.handle(linetypeHandle, Reference::HardPointer);
    }
    if (plotStyleKind == styleByHandle) {
        f.bits.handle(plotStyle, Reference::HardPointer);
        f.giveHandle(390, plotStyle);
    }
    if (f.reading()) {
        const std::string& name = f.names.nameOf(layerHandle);
        f.give(8, name.empty() ? std::string("0") : name);
    }
    if (linetypeKind != linetypeByLayer && f.reading()) {
        f.give(6, linetypeName(f, linetypeKind, linetypeHandle));
    }
    if (weight != -1) {
        f.give(370, weight);
    }
}

} // namespace drawing::dwg
