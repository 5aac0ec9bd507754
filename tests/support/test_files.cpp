#include "tests/support/test_files.h"

#include <array>
#include <cstdio>
#include <sys/wait.h>

using imaging::Bitmap;

static bool samplePixel(int x, int y)
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
            bitmap.setInk(x, y, samplePixel(x, y));
    return bitmap;
}

void saveBytes(const std::filesystem::path& path, const Bytes& bytes)
{
    std::ofstream stream(path, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    stream.close();
    ASSERT_TRUE(stream) << path;
}

std::string FilesTest::runTool(const std::string& commandLine) const
{
    const std::string full = "cd '" + m_folder.path().string() + "' && " + commandLine + " 2>&1";
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
    std::ifstream stream(m_folder / "seen.pbm", std::ios::binary);
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
    std::filesystem::remove(m_folder / "seen.pbm");
    return bitmap;
}

Bitmap FilesTest::darkInPpmOf(const std::string& commandLine) const
{
    runTool("{ " + commandLine + "; } >seen.ppm"); // its messages go elsewhere
    std::ifstream stream(m_folder / "seen.ppm", std::ios::binary);
    std::string magic;
    int width = 0;
    int height = 0;
    int full = 0;
    stream >> magic >> width >> height >> full;
    stream.get();
    EXPECT_EQ(magic + " " + std::to_string(full), "P6 255") << commandLine;
    Bitmap bitmap({width, height});
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int red = stream.get();
            const int green = stream.get();
            const int blue = stream.get();
            bitmap.setInk(x, y, 0.299 * red + 0.587 * green + 0.114 * blue < 127.5 - 1e-9);
        }
    EXPECT_TRUE(stream) << commandLine;
    std::filesystem::remove(m_folder / "seen.ppm");
    return bitmap;
}

void FilesTest::saveColours(const std::string& name, int width, int height) const
{
    const std::string head = "P6 " + std::to_string(width) + " " + std::to_string(height) + " 255\n";
    Bytes bytes(head.begin(), head.end());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            bytes.push_back(std::uint8_t(255 * x / width));
            bytes.push_back(std::uint8_t((x * 5 + y * 11) % 256));
            bytes.push_back(std::uint8_t(255 * y / height));
        }
    saveBytes(file(name), bytes);
}
