#include "engine_fixture.h"
#include "imaging/dib.h"

namespace {

using imaging::Rect;
using imaging::Region;
using Bytes = std::vector<std::byte>;

class ClipboardTest : public EngineTest
{
protected:
    Bytes copied(const Picture& picture, std::optional<Region> region, double dotsPerInch = 300)
    {
        put("image", picture, dotsPerInch);
        worker::Request request;
        request.copyToClipboard = {in("image"), std::move(region)};
        perform(request, OperationCopyToClipboard);
        EXPECT_EQ(this->picture("image"), picture) << "copying changes no file";
        return m_clipboard.dib;
    }

    Picture pasted(const Picture& picture, const Bytes& dib, imaging::Point position, bool transparent)
    {
        put("image", picture, 300);
        worker::Request request;
        m_clipboard.dib = dib;
        request.pasteFromClipboard = {in("image"), position, transparent};
        perform(request, OperationPasteFromClipboard);
        return this->picture("image");
    }
};

} // namespace

TEST_F(ClipboardTest, CopiesTheBoxOfTheRegionWithinTheImageAndPaperOutsideIt)
{
    const Picture picture = {"######", ".#....", "..#...", "...###"};
    const Region step = unite(Region(Rect{1, 0, 3, 1}), Region(Rect{2, 1, 5, 3}));
    const struct
    {
        std::optional<Region> region;
        Picture copy;
    } cases[] = {{{}, picture}, {step, {"##..", "....", ".#.."}}, {Region(Rect{-3, 2, 4, 9}), {"..#.", "...#"}}};
    for (const auto& each : cases)
        EXPECT_EQ(rowsOf(imaging::readDib(copied(picture, each.region))), each.copy);
    // 254 dots per inch are 10,000 dots per metre.
    const Bytes dib = copied(picture, {}, 254);
    EXPECT_EQ(std::to_integer<int>(dib[24]) + 256 * std::to_integer<int>(dib[25]), 10000);

    for (const Region& region : {Region(Rect{6, 0, 9, 4}), Region(Rect{-5, -5, 0, 0}), Region()}) {
        worker::Request request;
        request.copyToClipboard = {in("image"), region};
        expectRefused(request, OperationCopyToClipboard);
        EXPECT_EQ(m_clipboard.dib, dib) << "a refused copy touched the clipboard";
    }
}

TEST_F(ClipboardTest, PastesWithAndWithoutItsPaper)
{
    const Picture ground = {"######", "......", "######", "......"};
    const Bytes chequers = imaging::writeDib(drawn({"#.#.", ".#.#"}), {});
    EXPECT_EQ(pasted(ground, chequers, {1, 1}, true), (Picture{"######", ".#.#..", "######", "......"}));
    EXPECT_EQ(pasted(ground, chequers, {1, 1}, false), (Picture{"######", ".#.#..", "#.#.##", "......"}));
    EXPECT_EQ(pasted(ground, chequers, {-2, -1}, false), (Picture{".#####", "......", "######", "......"}));
    EXPECT_EQ(pasted(ground, chequers, {2147483647, -2147483647}, false), ground);
}

TEST_F(ClipboardTest, ADamagedBitmapOnTheClipboardLeavesTheFileAlone)
{
    put("image", {"....", "...."}, 300);
    Bytes dib = imaging::writeDib(drawn({"#.#.", ".#.#"}), {});
    dib.resize(dib.size() - 4);
    worker::Request request;
    m_clipboard.dib = dib;
    request.pasteFromClipboard = {in("image"), {0, 0}, true};
    expectRefused(request, OperationPasteFromClipboard);
}
