#pragma once

#include "imaging/raster_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

// What the tests of the file formats share. The pictures that they expect come from rules or drawings of their own;
// other programs (ImageMagick's convert, libtiff-tools) write the files that are read and read the files that are
// written.

using Bytes = std::vector<std::uint8_t>;

/// A picture that looks different from every side and after every mirror, with long and short runs.
bool samplePixel(int x, int y);
imaging::Bitmap sampleBitmap(int width, int height);

/// Rows of '#' for ink and '.' for paper.
imaging::Bitmap drawn(const std::vector<std::string>& rows);
std::vector<std::string> rowsOf(const imaging::Bitmap& bitmap);

/// Fails with both pictures (or their first difference, when they are large).
testing::AssertionResult samePicture(const imaging::Bitmap& expected, const imaging::Bitmap& found);

Bytes loadBytes(const std::filesystem::path& path);
void saveBytes(const std::filesystem::path& path, const Bytes& bytes);
inline std::span<const std::byte> asBytes(const Bytes& bytes)
{
    return std::as_bytes(std::span(bytes));
}

/// The text of the ImagingError that the call throws; empty, with a test failure, when it throws none.
template <typename Call> std::string errorOf(Call call)
{
    try {
        call();
    } catch (const std::exception& error) {
        return error.what();
    }
    ADD_FAILURE() << "an error was expected";
    return {};
}

/// A folder of its own for each test, gone afterwards.
class FilesTest : public testing::Test
{
protected:
    FilesTest();
    ~FilesTest() override;

    std::filesystem::path file(const std::string& name) const { return folder_ / name; }
    std::vector<std::string> namesInFolder() const;

    /// Runs a command line in the folder; the test fails when the program is missing or fails. Returns what it printed.
    std::string runTool(const std::string& commandLine) const;

    /// The picture that ImageMagick sees in a file of the folder.
    imaging::Bitmap seenByImageMagick(const std::string& name) const;

private:
    std::filesystem::path folder_;
};
