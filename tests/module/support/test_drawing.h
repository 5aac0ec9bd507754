// Small pictures, raster files and drawings.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "standin/host.h"

namespace test {

// '#' is ink, '.' is paper; all rows are of one length.
using Picture = std::vector<std::string>;

// A picture without ink.
Picture blank(int width, int height);

// A folder of this test's own, emptied.
std::filesystem::path freshFolder(const std::string& name);

// A 1-bit TIFF file. A millimetres-per-pixel value is written as dots per inch of 25.4 / value.
void writeTiff(const std::filesystem::path& path, const Picture& picture, double dotsPerInch);
// A bitmap file of 8 bits, all white.
void writeGrayBitmap(const std::filesystem::path& path, int width, int height);

struct PlacedImage
{
    std::filesystem::path file{};
    int width = 0;  // pixels
    int height = 0; // pixels
    double x = 0;
    double y = 0;             // lower left corner in the drawing
    double unitsPerPixel = 1; // drawing units
    double uy = 0;            // the u of a pixel turned: its y, and the v's x the other way
    int display = 7;          // bits: 1 show, 2 show when not aligned, 4 clip, 8 transparent
    bool paper = false;       // lies in the layout, not in the model space
};

// The handle of the image entity that stands at `index` in the list that was given to writeDrawing.
standin::Handle imageHandle(int index);
// An ASCII DXF file with these images in model space and nothing else.
void writeDrawing(const std::filesystem::path& path, const std::vector<PlacedImage>& images);

// What the drawing that is open holds now for an image.
Picture pictureInDrawing(int index);

// What a raster file holds.
Picture readPicture(const std::filesystem::path& path);

// Takes a worker that fails in the place of the real one, with what its runs are to do, one after the other: see
// tests/faulty_worker. Runs beyond that go well.
void planWorker(const std::vector<std::string>& runs);

// Every file in the temporary folder whose name begins with HV.
std::vector<std::wstring> temporaryFiles();

} // namespace test
