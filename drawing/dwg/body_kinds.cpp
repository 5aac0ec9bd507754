// Solids, regions, bodies and meshes.

#include <algorithm>

#include "drawing/dwg/caret_text.h"
#include "drawing/dwg/kinds.h"
#include "drawing/error.h"

namespace drawing::dwg {

namespace {

constexpr unsigned bitsOfByte = 8;
constexpr std::string_view lineEnd = "\r\n";

// The modeller's text has its lines in groups 1, and what is beyond a group's length in groups 3. Its characters stand
// mirrored in either form.
std::string takeModel(ObjectFields& f)
{
    std::string model;
    for (const PlacedGroup& group : f.takeAll({1, 3})) {
        if (group.code == 1 && !model.empty()) {
            model += lineEnd;
        }
        model += withoutCarets(group.value);
    }
    return model.empty() ? model : model.append(lineEnd);
}

void giveModel(ObjectFields& f, std::string_view model)
{
    constexpr std::size_t longestGroup = 255;
    constexpr std::size_t chunkBytes = 127; // as each may turn into two
    while (!model.empty()) {
        const std::size_t end = std::min(model.find(lineEnd), model.size());
        const std::string_view line = model.substr(0, end);
        model.remove_prefix(std::min(end + lineEnd.size(), model.size()));
        const std::size_t step = withCarets(line).size() <= longestGroup ? longestGroup : chunkBytes;
        f.give(1, withCarets(line.substr(0, step)));
        for (std::size_t begin = step; begin < line.size(); begin += step) {
            f.give(3, withCarets(line.substr(begin, step)));
        }
    }
}

// In blocks, each with its size before it; one of no size ends them.
std::string modelBlocks(ObjectFields& f, std::string_view model)
{
    constexpr std::size_t blockBytes = 4096;
    std::string result;
    for (std::size_t begin = 0;; begin += blockBytes) {
        std::string block(f.reading() || begin >= model.size() ? std::string_view() : model.substr(begin, blockBytes));
        auto size = static_cast<int>(block.size());
        f.bits.count(size, bitsOfByte);
        if (size == 0) {
            return result;
        }
        f.bits.bytes(block, static_cast<std::size_t>(size));
        result += block;
    }
}

// What is behind the text, the lines that show the body without its modeller, is carried along unread.
void body(ObjectFields& f)
{
    constexpr int asText = 1;
    f.marker("AcDbModelerGeometry");
    std::string model = takeModel(f);
    bool empty = model.empty();
    int version = asText;
    f.take(70, version);
    f.bits.bit(empty);
    if (!empty) {
        bool unknown = false;
        f.bits.bit(unknown);
        f.bits.shortNumber(version);
        if (version != asText) {
            throw DrawingError("the body's model is in an unknown form");
        }
        model = modelBlocks(f, model);
    }
    f.give(70, version);
    giveModel(f, model);
    if (!f.reading() && !f.restFollows) {
        bool lines = false;
        bool noSecondModel = true;
        f.bits.bit(lines);
        f.bits.bit(noSecondModel);
    }
}

// How many items follow, of so many groups each.
int itemCount(ObjectFields& f, int countCode, int code, int groups)
{
    constexpr unsigned leastBits = 2;
    int count = 0;
    f.take(countCode, count);
    if (!f.reading() && (count < 0 || static_cast<std::size_t>(count) > f.left(code) / static_cast<unsigned>(groups))) {
        throw DrawingError("a list is shorter than it says");
    }
    f.bits.count(count, leastBits * static_cast<unsigned>(groups));
    f.give(countCode, count);
    return count * groups;
}

// A mesh that is smoothed: its corners; its faces, each as the number of corners and these; its edges; and how sharp
// each of them stays.
void mesh(ObjectFields& f)
{
    constexpr unsigned leastPointBits = 6;
    f.marker("AcDbSubDMesh");
    f.shortNumber(71);
    f.bit(72);
    f.longNumber(91);
    int corners = 0;
    f.take(92, corners);
    corners = static_cast<int>(f.left(10));
    f.bits.count(corners, leastPointBits);
    f.give(92, corners);
    for (int i = 0; i < corners; ++i) {
        f.point3(10);
    }
    for (int left = itemCount(f, 93, 90, 1); left > 0; --left) {
        f.longNumber(90);
    }
    for (int left = itemCount(f, 94, 90, 2); left > 0; --left) {
        f.longNumber(90);
    }
    for (int left = itemCount(f, 95, 140, 1); left > 0; --left) {
        f.real(140);
    }
    f.longNumber(90);
}

} // namespace

std::span<const Kind> bodyKinds()
{
    static constexpr Kind kinds[] = {
        {0x25, true, "REGION", body},
        {0x26, true, "3DSOLID", body},
        {0x27, true, "BODY", body},
        {0, true, "MESH", mesh},
    };
    return kinds;
}

} // namespace drawing::dwg
