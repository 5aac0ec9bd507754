#include "standin/atil/atil.h"
#include "tests/support/pictures.h"

namespace {

using Rows = std::unique_ptr<Atil::RowProviderInterface>;

Atil::Image image(const Picture& rows)
{
    return {std::make_shared<imaging::Bitmap>(drawn(rows)), Atil::BitonalModel()};
}

Picture pictureOf(const Atil::Image& shown)
{
    return rowsOf(*shown.pixels());
}

// An image of one value.
Atil::Image filled(int width, int height, std::uint8_t value, const Atil::DataModel& model = Atil::BitonalModel())
{
    Atil::ImagePixel pixel(Atil::DataModelAttributes::kBitonal);
    pixel.value.bitonal = value;
    return {Atil::Size(width, height), &model, pixel, Atil::kDefaultTileSize};
}

Rows whole(const Atil::Image& from, int rotation = 0)
{
    return Rows(from.read(from.size(), Atil::Offset(0, 0), rotation));
}

TEST(AtilImage, CopiesShareUntilOneSideWrites)
{
    Atil::Image first = image({"....", "...."});
    const imaging::Bitmap* alone = first.pixels().get();
    first.paste(whole(filled(1, 1, 255)).get(), Atil::Offset(0, 0), false);
    EXPECT_EQ(first.pixels().get(), alone) << "nobody shared the pixels, so they are written where they are";
    EXPECT_EQ(Atil::Image(whole(first).get(), Atil::kDefaultTileSize).pixels(), first.pixels());
    Atil::Image second = first;
    EXPECT_EQ(first.pixels(), second.pixels());
    const Rows before = whole(first);
    second.paste(whole(filled(2, 1, 255)).get(), Atil::Offset(1, 1), false);
    EXPECT_EQ(pictureOf(first), (Picture{"#...", "...."}));
    EXPECT_EQ(pictureOf(second), (Picture{"#...", ".##."}));

    first = second;
    EXPECT_EQ(first.pixels(), second.pixels());
    EXPECT_EQ(rowsOf(*before->rows()), (Picture{"#...", "...."})) << "rows stay as they were when they were asked for";
}

TEST(AtilImage, PastesInkAndPaperClippedAtTheEdges)
{
    const Atil::Image ink = filled(3, 2, 255);
    const Atil::Image checks = image({"#.#", ".#."});
    // A quarter of a gigabyte if it were made.
    const Atil::Image huge = filled(65000, 33000, 0);
    const struct
    {
        const Atil::Image& source;
        Atil::Offset at;
        Picture expected;
    } table[] = {
        {ink, {-2, -1}, {"#..#", "...#", "...#"}},  {ink, {3, 2}, {"...#", "...#", "...#"}},
        {ink, {9, 9}, {"...#", "...#", "...#"}},    {checks, {-1, 0}, {".#.#", "#..#", "...#"}},
        {checks, {2, 0}, {"..#.", "...#", "...#"}}, {ink, {0, 0}, {"####", "####", "...#"}},
        {huge, {1, 1}, {"...#", "....", "...."}},
    };
    for (const auto& row : table) {
        Atil::Image canvas = image({"...#", "...#", "...#"});
        canvas.paste(whole(row.source).get(), row.at, false);
        EXPECT_EQ(pictureOf(canvas), row.expected) << row.at.x << ", " << row.at.y;
    }
}

TEST(AtilImage, DataModelsMustAgreeForAPaste)
{
    Atil::Image canvas = image({"...."});
    const Atil::DataModel plain(Atil::DataModelAttributes::DataType(3), Atil::DataModelAttributes::BitsPerPixel(0), 1);
    const Atil::Image stamp = filled(2, 1, 255, plain);
    EXPECT_THROW(canvas.paste(whole(stamp).get(), Atil::Offset(1, 0), false), Atil::ATILException);

    const Atil::DataModel saved = canvas.dataModel();
    canvas.setDataModel(&plain);
    canvas.paste(whole(stamp).get(), Atil::Offset(1, 0), false);
    EXPECT_EQ(canvas.dataModel().dataModelType(), Atil::DataModelAttributes::kUnknownDataModel);
    canvas.setDataModel(&saved);
    EXPECT_EQ(canvas.dataModel().dataModelType(), Atil::DataModelAttributes::kBitonalModel);
    EXPECT_EQ(pictureOf(canvas), Picture{".##."});

    const Atil::DataModel colour(Atil::DataModelAttributes::kRgba, Atil::DataModelAttributes::k24, 3);
    EXPECT_THROW(canvas.setDataModel(&colour), Atil::ATILException);
}

TEST(AtilImage, AbsurdSizesAreRefused)
{
    for (const Atil::Size size : {Atil::Size(0, 5), Atil::Size(5, -1), Atil::Size(2000000000, 2000000000)})
        EXPECT_THROW(filled(size.width, size.height, 0), Atil::ATILException) << size.width << " by " << size.height;
    EXPECT_THROW(Atil::Image(Atil::Size(1, 1), nullptr, Atil::ImagePixel(), Atil::kDefaultTileSize),
                 Atil::ATILException);
    EXPECT_THROW(Atil::newResampleFilter(whole(image({"#"})).release(), Atil::Size(0, 1), 0, 0, 0, 0, 0),
                 Atil::ATILException);
}

} // namespace
