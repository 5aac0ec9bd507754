#pragma once

#include <filesystem>
#include <optional>

#include "files/fresh_file.h"
#include "imaging/byte_stream.h"
#include "imaging/error.h"

namespace imaging {

/// A raster file that takes its target's place only when it is complete: a files::FreshFile for the formats to write
/// to. Its errors are ImagingErrors with the same words.
class FreshFile : public ByteSink
{
public:
    explicit FreshFile(const std::filesystem::path& target)
    {
        orFail([&] { m_file.emplace(target); });
    }

    std::uint64_t size() const override { return m_file->size(); }
    void write(std::uint64_t offset, const void* bytes, std::size_t count) override
    {
        orFail([&] { m_file->write(offset, bytes, count); });
    }
    void commit()
    {
        orFail([&] { m_file->commit(); });
    }

private:
    template <typename Work> static void orFail(Work work)
    {
        try {
            work();
        } catch (const files::FileError& error) {
            throw ImagingError(error.what());
        }
    }

    std::optional<files::FreshFile> m_file;
};

} // namespace imaging
