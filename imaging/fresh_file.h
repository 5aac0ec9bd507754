#pragma once

#include <filesystem>
#include <fstream>

#include "imaging/byte_stream.h"

namespace imaging {

/// A file that takes its target's place only when it is complete: written beside the target under a name of its own and
/// renamed over it. Without commit(), whatever was written is removed and the target stays as it was.
class FreshFile : public ByteSink
{
public:
    /// Throws ImagingError when the target is write-protected or its folder takes no new file.
    explicit FreshFile(std::filesystem::path target);
    ~FreshFile() override;

    FreshFile(const FreshFile&) = delete;
    FreshFile& operator=(const FreshFile&) = delete;

    std::uint64_t size() const override { return m_size; }
    void write(std::uint64_t offset, const void* bytes, std::size_t count) override;

    /// Throws ImagingError when the last bytes can't be written or the target can't be replaced.
    void commit();

private:
    std::filesystem::path m_target;
    std::filesystem::path m_fresh;
    std::ofstream m_stream;
    std::uint64_t m_size = 0;
    std::uint64_t m_position = 0;
    bool m_committed = false;
};

} // namespace imaging
