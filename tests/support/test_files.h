#pragma once

#include <cstdint>
#include <span>

#include "imaging/raster_file.h"
#include "tests/support/files.h"
#include "tests/support/pictures.h"

// What the tests of the file formats share. The pictures that they expect come from rules or drawings of their own;
// other programs (ImageMagick's convert, libtiff-tools, netpbm) write the files that are read and read the files that
// are written.

using Bytes = std::vector<std::uint8_t>;

/// A picture that looks different from every side and after every mirror, with long and short runs.
imaging::Bitmap sampleBitmap(int width, int height);

void saveBytes(const std::filesystem::path& path, const Bytes& bytes);
inline std::span<const std::byte> asBytes(const Bytes& bytes)
{
    return std::as_bytes(std::span(bytes));
}

/// The text of the error that the call throws; empty, with a test failure, when it throws none.
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

/// A folder of its own for each test.
class FilesTest : public testing::Test
{
protected:
    std::filesystem::path file(const std::string& name) const { return m_folder / name; }

    /// Runs a command line in the folder; the test fails when the program is missing or fails. Returns what it printed.
    std::string runTool(const std::string& commandLine) const;

    /// The picture that ImageMagick sees in a file of the folder.
    imaging::Bitmap seenByImageMagick(const std::string& name) const;

    /// Of the PPM that a command line prints: ink where the colours are darker than half.
    imaging::Bitmap darkInPpmOf(const std::string& commandLine) const;

    /// Saves a picture with all kinds of colours, near half and far from it, as PPM.
    void saveColours(const std::string& name, int width, int height) const;

    TemporaryFolder m_folder;
};
