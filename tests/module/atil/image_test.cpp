#include <gtest/gtest.h>

#include <initializer_list>
#include <string_view>

#include "imaging/bitmap.h"
#include "standin/atil/atil.h"

namespace {

using Rows = std::unique_ptr<Atil::RowProviderInterface>;

std::shared_ptr<imaging::Bitmap> picture(std::initializer_list<std::string_view> rows)
{
    auto bitmap = std::make_shared<imaging::Bitmap>(imaging::Size{int(rows.begin()->size()), int(rows.size())});
    int y = 0;
    for (const std::string_view row : rows) {
        for (int x = 0; x < bitmap->width(); ++x)
            bitmap->setInk(x, y, row[std::size_t(x)] == '#');
        ++y;
    }
    return bitmap;
}

Atil::Image image(std::initializer_list<std::string_view> rows)
{
    return {picture(rows), Atil::BitonalModel()};
}

std::string drawn(const imaging::Bitmap& bitmap)
{
    std::string text;
    for (int y = 0; y < bitmap.height(); ++y) {
        for (int x = 0; x < bitmap.width(); ++x)
            text += bitmap.ink(x, y) ? '#' : '.';
        text += '\n';
    }
    return text;
}

Atil::ImagePixel pixel(std::uint8_t value)
{
    Atil::ImagePixel made(Atil::DataModelAttributes::kBitonal);
    made.value.bitonal = value;
    return made;
}

Rows whole(const Atil::Image& from, int rotation = 0)
{
    return Rows(from.read(from.size(), Atil::Offset(0, 0), rotation));
}

TEST(AtilImage, ReadsMirroredAndTurned)
{
    const Atil::Image source = image({"##..", //
                                      "#...", //
                                      "...#"});
    struct
    {
        int code;
        const char* expected;
    } const table[] = {
        {0, "##..\n#...\n...#\n"},   // as it is
        {1, "...#\n#...\n##..\n"},   // top and bottom changed places
        {2, "..##\n...#\n#...\n"},   // left and right changed places
        {5, "..#\n...\n#..\n##.\n"}, // the right edge is on top now: counter-clockwise
        {6, ".##\n..#\n...\n#..\n"}, // the left edge is on top now: clockwise
    };
    for (const auto& row : table) {
        const Rows rows = whole(source, row.code);
        ASSERT_NE(rows, nullptr) << row.code;
        const Atil::Image result(rows.get(), Atil::kDefaultTileSize);
        EXPECT_EQ(drawn(*result.pixels()), row.expected) << "code " << row.code;
        EXPECT_EQ(result.size().width, row.code >= 5 ? 3 : 4);
        EXPECT_EQ(result.dataModel().dataModelType(), Atil::DataModelAttributes::kBitonalModel);
    }
    for (const int code : {-1, 3, 4, 7})
        EXPECT_EQ(whole(source, code), nullptr) << code;
}

TEST(AtilImage, ReadsAPartMirroredAndTurned)
{
    const Atil::Image source = image({".....", //
                                      ".##..", //
                                      ".#.#."});
    const Rows rows(source.read(Atil::Size(3, 2), Atil::Offset(1, 1), 6));
    EXPECT_EQ(drawn(*rows->rows()), "##\n.#\n#.\n");
    const Rows mirrored(source.read(Atil::Size(3, 2), Atil::Offset(1, 1), 2));
    EXPECT_EQ(drawn(*mirrored->rows()), ".##\n#.#\n");
    EXPECT_EQ(source.read(Atil::Size(3, 2), Atil::Offset(3, 1)), nullptr) << "reaches over the right edge";
    EXPECT_EQ(source.read(Atil::Size(3, 2), Atil::Offset(-1, 0)), nullptr);
    EXPECT_EQ(source.read(Atil::Size(0, 2), Atil::Offset(0, 0)), nullptr);
}

TEST(AtilImage, CopiesShareUntilOneSideWrites)
{
    Atil::Image first = image({"....", "...."});
    Atil::Image second = first;
    EXPECT_EQ(first.pixels(), second.pixels());
    const Rows before = whole(first);
    const Atil::BitonalModel model;
    Atil::Image stamp(Atil::Size(2, 1), &model, pixel(255), Atil::kDefaultTileSize);
    second.paste(whole(stamp).get(), Atil::Offset(1, 1), false);
    EXPECT_EQ(drawn(*first.pixels()), "....\n....\n");
    EXPECT_EQ(drawn(*second.pixels()), "....\n.##.\n");

    first = second;
    EXPECT_EQ(first.pixels(), second.pixels());
    EXPECT_EQ(drawn(*before->rows()), "....\n....\n") << "rows stay as they were when they were asked for";
}

TEST(AtilImage, WritingAloneCopiesNothing)
{
    const Atil::BitonalModel model;
    Atil::Image canvas = image({"....", "...."});
    const imaging::Bitmap* before = canvas.pixels().get();
    Atil::Image stamp(Atil::Size(1, 1), &model, pixel(255), Atil::kDefaultTileSize);
    canvas.paste(whole(stamp).get(), Atil::Offset(0, 0), false);
    EXPECT_EQ(canvas.pixels().get(), before) << "nobody shared the pixels, so they are written where they are";
}

TEST(AtilImage, ReadingTheWholeAndMakingAnImageOfItSharesThePixels)
{
    const Atil::Image source = image({"#.", ".#"});
    const Atil::Image copy(whole(source).get(), Atil::kDefaultTileSize);
    EXPECT_EQ(copy.pixels(), source.pixels());
}

TEST(AtilImage, PastesClippedAtTheEdges)
{
    const Atil::BitonalModel model;
    const Atil::Image ink(Atil::Size(3, 2), &model, pixel(255), Atil::kDefaultTileSize);
    const Atil::Image checks = image({"#.#", ".#."});
    struct
    {
        const Atil::Image& source;
        Atil::Offset at;
        const char* expected;
    } const table[] = {
        {ink, {-2, -1}, "#...\n....\n....\n"},  {ink, {3, 2}, "....\n....\n...#\n"},
        {ink, {9, 9}, "....\n....\n....\n"},    {checks, {-1, 0}, ".#..\n#...\n....\n"},
        {checks, {2, 2}, "....\n....\n..#.\n"}, {ink, {0, 0}, "###.\n###.\n....\n"},
    };
    for (const auto& row : table) {
        Atil::Image canvas = image({"....", "....", "...."});
        canvas.paste(whole(row.source).get(), row.at, false);
        EXPECT_EQ(drawn(*canvas.pixels()), row.expected) << row.at.x << ", " << row.at.y;
    }
}

TEST(AtilImage, PastingReplacesInkByPaper)
{
    const Atil::BitonalModel model;
    Atil::Image canvas = image({"###", "###"});
    const Atil::Image paper(Atil::Size(2, 1), &model, pixel(0), Atil::kDefaultTileSize);
    canvas.paste(whole(paper).get(), Atil::Offset(0, 0), false);
    canvas.paste(whole(image({"."})).get(), Atil::Offset(2, 1), false);
    EXPECT_EQ(drawn(*canvas.pixels()), "..#\n##.\n");
}

TEST(AtilImage, DataModelsMustAgreeForAPaste)
{
    Atil::Image canvas = image({"...."});
    const Atil::DataModel plain(Atil::DataModelAttributes::DataType(3), Atil::DataModelAttributes::BitsPerPixel(0), 1);
    const Atil::Image stamp(Atil::Size(2, 1), &plain, pixel(255), Atil::kDefaultTileSize);
    EXPECT_THROW(canvas.paste(whole(stamp).get(), Atil::Offset(1, 0), false), Atil::ATILException);

    const Atil::DataModel saved = canvas.dataModel();
    canvas.setDataModel(&plain);
    canvas.paste(whole(stamp).get(), Atil::Offset(1, 0), false);
    EXPECT_EQ(canvas.dataModel().dataModelType(), Atil::DataModelAttributes::kUnknownDataModel);
    canvas.setDataModel(&saved);
    EXPECT_EQ(canvas.dataModel().dataModelType(), Atil::DataModelAttributes::kBitonalModel);
    EXPECT_EQ(drawn(*canvas.pixels()), ".##.\n");

    const Atil::DataModel colour(Atil::DataModelAttributes::kRgba, Atil::DataModelAttributes::k24, 3);
    EXPECT_THROW(canvas.setDataModel(&colour), Atil::ATILException);
}

TEST(AtilImage, AnImageOfOneValueTakesNoMemoryUntilItIsLookedAt)
{
    const Atil::BitonalModel model;
    // Two gigabytes if it were made.
    const Atil::Image huge(Atil::Size(130000, 130000), &model, pixel(255), Atil::kDefaultTileSize);
    Atil::Image canvas = image({"..", ".."});
    canvas.paste(whole(huge).get(), Atil::Offset(1, 0), false);
    EXPECT_EQ(drawn(*canvas.pixels()), ".#\n.#\n");
}

TEST(AtilImage, AbsurdSizesAreRefused)
{
    const Atil::BitonalModel model;
    for (const Atil::Size size : {Atil::Size(0, 5), Atil::Size(5, -1), Atil::Size(2000000000, 2000000000)})
        EXPECT_THROW(Atil::Image(size, &model, pixel(0), Atil::kDefaultTileSize), Atil::ATILException)
            << size.width << " by " << size.height;
    EXPECT_THROW(Atil::Image(Atil::Size(1, 1), nullptr, pixel(0), Atil::kDefaultTileSize), Atil::ATILException);
    EXPECT_THROW(Atil::newResampleFilter(whole(image({"#"})).release(), Atil::Size(0, 1), 0, 0, 0, 0, 0),
                 Atil::ATILException);
}

TEST(AtilImage, ResamplingKeepsThePicture)
{
    const Atil::Image source = image({"##..", "##..", "..##", "..##"});
    const Rows half(Atil::newResampleFilter(whole(source).release(), Atil::Size(2, 2), 0, 0, 0, 0, 0));
    EXPECT_EQ(half->size().width, 2);
    const Atil::Image smaller(half.get(), Atil::kDefaultTileSize);
    EXPECT_EQ(drawn(*smaller.pixels()), "#.\n.#\n");
    const Rows twice(Atil::newResampleFilter(whole(smaller).release(), Atil::Size(4, 4), 0, 0, 0, 0, 0));
    EXPECT_EQ(drawn(*twice->rows()), drawn(*source.pixels()));
}

} // namespace
