#include "test_files.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <random>
#include <sstream>

#include <sys/wait.h>

using imaging::Bitmap;

bool samplePixel(int x, int y)
{
    if (y % 16 == 3)
        return x > 4;
    if (y % 16 == 4 || x == 0)
        return false;
    if (x % 64 < 9)
        return (x * 7 + y * 13) % 5 < 2;
    const std::uint32_t mixed = (std::uint32_t(x / 3) * 2654435761u) ^ (std::uint32_t(y / 2) * 40503u + 77u);
    return (mixed >> 13) % 4 == 0;
}

Bitmap sampleBitmap(int width, int height)
{
    Bitmap bitmap({width, height});
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if (samplePixel(x, y))
                bitmap.setInk(x, y, true);
    return bitmap;
}

Bitmap drawn(const std::vector<std::string>& rows)
{
    Bitmap bitmap({int(rows.at(0).size()), int(rows.size())});
    for (int y = 0; y < bitmap.height(); ++y)
        for (int x = 0; x < bitmap.width(); ++x)
            bitmap.setInk(x, y, rows[std::size_t(y)].at(std::size_t(x)) == '#');
    return bitmap;
}

std::vector<std::string> rowsOf(const Bitmap& bitmap)
{
    std::vector<std::string> rows;
    for (int y = 0; y < bitmap.height(); ++y) {
        rows.emplace_back();
        for (int x = 0; x < bitmap.width(); ++x)
            rows.back().push_back(bitmap.ink(x, y) ? '#' : '.');
    }
    return rows;
}

testing::AssertionResult samePicture(const Bitmap& expected, const Bitmap& found)
{
    if (expected == found)
        return testing::AssertionSuccess();
    testing::AssertionResult failure = testing::AssertionFailure();
    failure << "the pictures differ; sizes " << expected.width() << " x " << expected.height() << " expected, "
            << found.width() << " x " << found.height() << " found\n";
    if (expected.size() != found.size())
        return failure;
    for (int y = 0; y < expected.height(); ++y)
        for (int x = 0; x < expected.width(); ++x)
            if (expected.ink(x, y) != found.ink(x, y)) {
                failure << "first at column " << x << ", row " << y << "\n";
                if (expected.width() <= 100 && expected.height() <= 40)
                    for (int row = 0; row < expected.height(); ++row)
                        failure << rowsOf(expected)[std::size_t(row)] << "   " << rowsOf(found)[std::size_t(row)]
                                << "\n";
                return failure;
            }
    return failure << "only in the bits that pad the rows, which must be zero\n";
}

Bytes loadBytes(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream) << path;
    return Bytes(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

void saveBytes(const std::filesystem::path& path, const Bytes& bytes)
{
    std::ofstream stream(path, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    stream.close();
    ASSERT_TRUE(stream) << path;
}

FilesTest::FilesTest()
    : folder_(std::filesystem::temp_directory_path() /
              ("halvoran-files-" + std::to_string(std::random_device()()) + "-" +
               testing::UnitTest::GetInstance()->current_test_info()->name()))
{
    std::string name = folder_.filename().string();
    std::replace(name.begin(), name.end(), '/', '-');
    folder_ = folder_.parent_path() / name;
    std::filesystem::create_directories(folder_);
}

FilesTest::~FilesTest()
{
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::vector<std::string> FilesTest::namesInFolder() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string FilesTest::runTool(const std::string& commandLine) const
{
    const std::string full = "cd '" + folder_.string() + "' && " + commandLine + " 2>&1";
    std::FILE* pipe = popen(full.c_str(), "r");
    if (!pipe) {
        ADD_FAILURE() << "no shell for: " << commandLine;
        return {};
    }
    std::string output;
    std::array<char, 4096> piece;
    while (const std::size_t got = std::fread(piece.data(), 1, piece.size(), pipe))
        output.append(piece.data(), got);
    const int status = pclose(pipe);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << commandLine << "\n" << output;
    return output;
}

Bitmap FilesTest::seenByImageMagick(const std::string& name) const
{
    runTool("convert '" + name + "' -depth 1 pbm:seen.pbm");
    std::ifstream stream(folder_ / "seen.pbm", std::ios::binary);
    std::string magic;
    int width = 0;
    int height = 0;
    stream >> magic >> width >> height;
    stream.get();
    EXPECT_EQ(magic, "P4") << "what ImageMagick made of " << name;
    if (magic != "P4")
        return {};
    Bitmap bitmap({width, height});
    std::string row(std::size_t(width + 7) / 8, '\0');
    for (int y = 0; y < height; ++y) {
        stream.read(row.data(), std::streamsize(row.size()));
        for (int x = 0; x < width; ++x)
            bitmap.setInk(x, y, row[std::size_t(x) / 8] >> (7 - x % 8) & 1);
    }
    EXPECT_TRUE(stream) << "what ImageMagick made of " << name;
    std::filesystem::remove(folder_ / "seen.pbm");
    return bitmap;
}
