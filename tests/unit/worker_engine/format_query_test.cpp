#include "engine_fixture.h"

namespace {

struct Row
{
    std::u16string label;
    std::u16string pattern;
};

// Takes the dialog's filter apart as the dialog does: label and pattern in turn, an empty label ends it.
std::vector<Row> rowsOf(const std::u16string& filter)
{
    std::vector<std::u16string> parts(1);
    for (const char16_t unit : filter) {
        if (unit == u'|')
            parts.emplace_back();
        else
            parts.back() += unit;
    }
    std::vector<Row> rows;
    for (std::size_t i = 0; i + 1 < parts.size() && !parts[i].empty(); i += 2)
        rows.push_back({parts[i], parts[i + 1]});
    return rows;
}

class FormatQueryTest : public EngineTest
{
protected:
    worker::FormatQuery ask(const std::string& name, int index)
    {
        worker::Request request;
        request.formatQuery = {in(name), {}, index, -1000};
        perform(request, OperationFormatQuery);
        return request.formatQuery;
    }

    int rowCount() { return static_cast<int>(rowsOf(ask("none", 0).filter).size()); }

    const Picture sample{"#.#", ".##"};
};

} // namespace

TEST_F(FormatQueryTest, OffersTiffGroup4FirstAndCalsSecondWithOnePatternEach)
{
    const worker::FormatQuery answer = ask("none.tif", 0);
    EXPECT_TRUE(answer.filter.ends_with(u"||")) << "the dialog's filter has no end";
    const std::vector<Row> rows = rowsOf(answer.filter);
    ASSERT_GE(rows.size(), 7u);
    EXPECT_EQ(rows[0].pattern, u"*.tif");
    EXPECT_EQ(rows[1].pattern, u"*.cal");
    for (const Row& row : rows) {
        EXPECT_TRUE(row.pattern.starts_with(u"*.")) << "the dialog takes the extension from behind '*.'";
        EXPECT_EQ(row.pattern.find(u';'), std::u16string::npos) << "a second pattern would become part of a name";
        EXPECT_TRUE(row.label.ends_with(u" (" + row.pattern + u")"));
    }
    EXPECT_EQ(ask("none.tif", 0).formatCode, 29);
    EXPECT_EQ(ask("none.tif", 1).formatCode, 50);
}

TEST_F(FormatQueryTest, EveryRowsFormatIsWrittenAndKnownAgainByItsContent)
{
    put("source", sample, 300);
    std::set<int> codes;
    for (int row = 0; row < rowCount(); ++row) {
        const worker::FormatQuery answer = ask("source", row);
        EXPECT_EQ(answer.filterIndex, row);
        codes.insert(answer.formatCode);
        worker::Request request;
        request.convertFile = {in("source"), in("saved.dat"), static_cast<std::uint32_t>(answer.formatCode), {}};
        perform(request, OperationConvertFile);
        EXPECT_EQ(picture("saved.dat"), sample) << "format number " << answer.formatCode;
        const worker::FormatQuery own = ask("saved.dat", -1);
        EXPECT_EQ(own.filterIndex, row) << "format number " << answer.formatCode;
        EXPECT_EQ(own.formatCode, answer.formatCode);
    }
    EXPECT_EQ(static_cast<int>(codes.size()), rowCount()) << "two rows share a format number";
}

TEST_F(FormatQueryTest, GoesByExtensionWhenTheFileCannotBeRead)
{
    putBytes("broken.bmp", "BM but nothing more");
    putBytes("notes.txt", "just text");
    const std::vector<Row> rows = rowsOf(ask("none", 0).filter);
    const auto patternOf = [&](const std::string& name) {
        return rows[static_cast<std::size_t>(ask(name, -1).filterIndex)].pattern;
    };
    EXPECT_EQ(patternOf("missing.PNG"), u"*.png");
    EXPECT_EQ(patternOf("missing.cal"), u"*.cal");
    EXPECT_EQ(patternOf("broken.bmp"), u"*.bmp");
    EXPECT_EQ(ask("missing.tif", -1).filterIndex, 0);
    EXPECT_EQ(ask("notes.txt", -1).filterIndex, 0);
    EXPECT_EQ(ask("no extension", -1).filterIndex, 0);
    put("really a picture.cal", sample, 300, imaging::Format::Png);
    EXPECT_EQ(patternOf("really a picture.cal"), u"*.png") << "content outweighs the extension";
}

TEST_F(FormatQueryTest, OffersGroup4ForATiffThatIsOnlyRead)
{
    // A TIFF of 8 by 1 pixels in modified Huffman (compression 2), with the directory at offset 8.
    std::string tiff("II\x2a\0\x08\0\0\0", 8);
    const auto entry = [&](char tag, char type, char value) {
        tiff += std::string{tag, '\x01', type, 0, 1, 0, 0, 0, value, 0, 0, 0};
    };
    tiff += std::string("\x07\0", 2);
    entry('\x00', 3, 8);  // width
    entry('\x01', 3, 1);  // height
    entry('\x03', 3, 2);  // compression
    entry('\x06', 3, 0);  // white is zero
    entry('\x11', 4, 98); // strip offset
    entry('\x16', 3, 1);  // rows per strip
    entry('\x17', 4, 1);  // strip length
    tiff += std::string(4, '\0');
    tiff += '\x98'; // a white run of 8: 10011
    putBytes("old.png", tiff);
    EXPECT_EQ(ask("old.png", -1).formatCode, 29);
}

TEST_F(FormatQueryTest, RefusesARowThatThereIsNot)
{
    for (const int index : {-2, rowCount(), 1000}) {
        worker::Request request;
        request.formatQuery = {in("any.tif"), {}, index, 0};
        expectRefused(request, OperationFormatQuery);
    }
}
