#pragma once

#include <gtest/gtest.h>
#include <map>

#include "imaging/error.h"
#include "imaging/raster_file.h"
#include "tests/support/files.h"
#include "tests/support/pictures.h"
#include "worker/engine/operations.h"
#include "workerlink/protocol.h"

/// A clipboard of the test's own.
class TestClipboard : public worker::Clipboard
{
public:
    std::vector<std::byte> readDib() override { return dib; }
    void putDib(std::span<const std::byte> bytes) override { dib.assign(bytes.begin(), bytes.end()); }

    std::vector<std::byte> dib;
};

/// A folder of its own for each test, in which requests are done as the worker does them.
class EngineTest : public testing::Test
{
protected:
    std::filesystem::path in(const std::string& name) const { return m_folder / name; }

    void put(const std::string& name, const Picture& picture, double dotsPerInch,
             imaging::Format format = imaging::Format::TiffGroup4)
    {
        imaging::writeRaster(in(name), drawn(picture), {dotsPerInch, dotsPerInch}, format);
    }

    void putBytes(const std::string& name, const std::string& bytes)
    {
        std::ofstream(in(name), std::ios::binary) << bytes;
    }

    Picture picture(const std::string& name) const { return rowsOf(imaging::readRaster(in(name)).bitmap); }

    void perform(worker::Request& request, std::uint32_t code)
    {
        const worker::Operation* operation = worker::findOperation(code);
        ASSERT_NE(operation, nullptr) << "the worker has no operation " << code;
        operation->run(request, {m_gate, m_clipboard});
    }

    /// The request is refused with an error for the user, and no file of the folder has changed, come or gone.
    template <class Error = imaging::ImagingError> void expectRefused(worker::Request request, std::uint32_t code)
    {
        const auto before = files();
        EXPECT_THROW(perform(request, code), Error);
        EXPECT_TRUE(before == files()) << "a refused request touched a file";
    }

    std::map<std::filesystem::path, std::string> files() const
    {
        std::map<std::filesystem::path, std::string> contents;
        for (const std::filesystem::path& name : m_folder.names())
            contents[name] = contentOf(m_folder / name);
        return contents;
    }

    worker::CommitGate m_gate;
    TestClipboard m_clipboard;
    TemporaryFolder m_folder;
};
