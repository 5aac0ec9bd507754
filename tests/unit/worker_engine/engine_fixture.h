#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "imaging/error.h"
#include "imaging/raster_file.h"
#include "worker/engine/operations.h"

/// A picture as a draughtsman would jot it down: '#' is ink, '.' paper, one string a row.
using Picture = std::vector<std::string>;

inline imaging::Bitmap bitmapOf(const Picture& picture)
{
    imaging::Bitmap bitmap({static_cast<int>(picture[0].size()), static_cast<int>(picture.size())});
    for (int y = 0; y < bitmap.height(); ++y) {
        for (int x = 0; x < bitmap.width(); ++x)
            bitmap.setInk(x, y, picture[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] == '#');
    }
    return bitmap;
}

inline Picture pictureOf(const imaging::Bitmap& bitmap)
{
    Picture picture;
    for (int y = 0; y < bitmap.height(); ++y) {
        std::string row;
        for (int x = 0; x < bitmap.width(); ++x)
            row += bitmap.ink(x, y) ? '#' : '.';
        picture.push_back(row);
    }
    return picture;
}

/// A folder of its own for each test, in which requests are done as the worker does them.
class EngineTest : public testing::Test
{
protected:
    EngineTest()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "halvoran-engine-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
    }
    ~EngineTest() override { std::filesystem::remove_all(folder_); }

    std::filesystem::path in(const std::string& name) const { return folder_ / name; }

    void put(const std::string& name, const Picture& picture, double dotsPerInch,
             imaging::Format format = imaging::Format::TiffGroup4)
    {
        imaging::writeRaster(in(name), bitmapOf(picture), {dotsPerInch, dotsPerInch}, format);
    }

    void putBytes(const std::string& name, const std::string& bytes)
    {
        std::ofstream(in(name), std::ios::binary) << bytes;
    }

    std::string bytes(const std::string& name) const
    {
        std::ifstream file(in(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    Picture picture(const std::string& name) const { return pictureOf(imaging::readRaster(in(name)).bitmap); }

    std::set<std::string> files() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            names.insert(entry.path().filename().string());
        return names;
    }

    void perform(worker::Request& request, std::uint32_t code)
    {
        const worker::Operation* operation = worker::findOperation(code);
        ASSERT_NE(operation, nullptr) << "the worker has no operation " << code;
        operation->run(request, gate_);
    }

    /// The request is refused with an error for the user, and no file of the folder has changed, come or gone.
    void expectRefused(worker::Request request, std::uint32_t code)
    {
        std::vector<std::pair<std::string, std::string>> before;
        for (const std::string& name : files())
            before.emplace_back(name, bytes(name));
        EXPECT_THROW(perform(request, code), imaging::ImagingError);
        std::vector<std::pair<std::string, std::string>> after;
        for (const std::string& name : files())
            after.emplace_back(name, bytes(name));
        EXPECT_TRUE(before == after) << "a refused request touched a file";
    }

    worker::CommitGate gate_;

private:
    std::filesystem::path folder_;
};

namespace code {
constexpr std::uint32_t formatQuery = 6;
constexpr std::uint32_t convertFile = 7;
constexpr std::uint32_t invert = 10;
constexpr std::uint32_t rotate = 11;
constexpr std::uint32_t filter = 12;
} // namespace code
