#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <vector>

// Where the file formats read their bytes from and write them to, at any offset.

namespace imaging {

class ByteSource
{
public:
    virtual ~ByteSource() = default;

    virtual std::uint64_t size() const = 0;

    /// Reads up to count bytes at the offset; fewer only at the end. Throws ImagingError when the device fails.
    virtual std::size_t read(std::uint64_t offset, void* target, std::size_t count) = 0;

    /// Reads exactly count bytes; throws ImagingError when the source ends before.
    void readExactly(std::uint64_t offset, void* target, std::size_t count);
};

class FileSource : public ByteSource
{
public:
    /// Throws ImagingError when the file can't be opened.
    explicit FileSource(const std::filesystem::path& path);

    std::uint64_t size() const override { return m_size; }
    std::size_t read(std::uint64_t offset, void* target, std::size_t count) override;

private:
    std::ifstream m_stream;
    std::uint64_t m_size = 0;
    std::uint64_t m_position = 0;
};

/// Bytes that stay the caller's.
class MemorySource : public ByteSource
{
public:
    explicit MemorySource(std::span<const std::byte> bytes) : m_bytes(bytes) {}

    std::uint64_t size() const override { return m_bytes.size(); }
    std::size_t read(std::uint64_t offset, void* target, std::size_t count) override;

    std::span<const std::byte> bytes() const { return m_bytes; }

private:
    std::span<const std::byte> m_bytes;
};

class ByteSink
{
public:
    virtual ~ByteSink() = default;

    virtual std::uint64_t size() const = 0;

    /// Writes all the bytes at an offset not beyond size(). Throws ImagingError when the device fails or is full.
    virtual void write(std::uint64_t offset, const void* bytes, std::size_t count) = 0;

    void append(const void* bytes, std::size_t count) { write(size(), bytes, count); }
};

class MemorySink : public ByteSink
{
public:
    std::uint64_t size() const override { return m_bytes.size(); }
    void write(std::uint64_t offset, const void* bytes, std::size_t count) override;

    /// Makes room at once for what is to come.
    void reserve(std::size_t count) { m_bytes.reserve(count); }

    const std::vector<std::byte>& bytes() const { return m_bytes; }
    std::vector<std::byte> take() { return std::move(m_bytes); }

private:
    std::vector<std::byte> m_bytes;
};

} // namespace imaging
