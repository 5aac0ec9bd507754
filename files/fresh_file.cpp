#include "files/fresh_file.h"

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <system_error>
#include <utility>

namespace files {

namespace {

namespace fs = std::filesystem;

// A fresh file's name: these two and, between them, sixteen hexadecimal digits.
constexpr std::string_view nameBegin = "~halvoran-";
constexpr std::string_view nameEnd = ".new";
constexpr std::size_t nameDigits = 16;

fs::path freshName()
{
    std::random_device random;
    char digits[nameDigits + 1];
    std::snprintf(digits, sizeof digits, "%08x%08x", unsigned(random()), unsigned(random()));
    return std::string(nameBegin).append(digits).append(nameEnd);
}

bool isFreshName(const fs::path& name)
{
    const std::u16string text = name.u16string();
    const auto isDigit = [](char16_t unit) { return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'f'); };
    return text.size() == nameBegin.size() + nameDigits + nameEnd.size() &&
           std::all_of(text.begin() + nameBegin.size(), text.end() - nameEnd.size(), isDigit);
}

void removeLeftovers(const fs::path& folder)
{
    for (const fs::path& name : namesIn(folder, nameBegin, nameEnd)) {
        if (isFreshName(name))
            removeAbandoned(folder / name);
    }
}

void refuseProtectedTarget(const fs::path& target)
{
    const PathKind kind = kindOf(target);
    if (kind == PathKind::other)
        throw FileError("This is not a file that can be written.");
    // Renaming over a write-protected file succeeds on some systems; the user's protection holds on all.
    if (kind == PathKind::protectedFile)
        throw FileError("The file is write-protected.");
}

// Runs the work and says what could not be done, with the system's reason, when it fails.
template <typename Work> void orFail(const char* what, Work work)
{
    try {
        work();
    } catch (const std::system_error& error) {
        throw FileError(std::string(what) + ": " + error.code().default_error_condition().message() + ".");
    }
}

// Under a name in the folder that no file has.
void makeIn(const fs::path& folder, std::optional<HeldFile>& file)
{
    while (!file) {
        try {
            file.emplace(folder / freshName());
        } catch (const std::system_error& error) {
            if (error.code() != std::errc::file_exists)
                throw;
        }
    }
}

} // namespace

FreshFile::FreshFile(fs::path target) : m_target(std::move(target))
{
    refuseProtectedTarget(m_target);
    removeLeftovers(m_target.parent_path());
    orFail("The file can't be written", [&] { makeIn(m_target.parent_path(), m_file); });
}

void FreshFile::write(std::uint64_t offset, const void* bytes, std::size_t count)
{
    constexpr std::size_t worthWriting = std::size_t(1) << 18;
    if (offset != m_waitingAt + m_waiting.size() || m_waiting.size() + count > worthWriting) {
        flush();
        m_waitingAt = offset;
    }
    const char* first = static_cast<const char*>(bytes);
    if (count > worthWriting) {
        orFail("Writing the file failed", [&] { m_file->write(offset, first, count); });
        m_waitingAt = offset + count;
    } else {
        m_waiting.insert(m_waiting.end(), first, first + count);
    }
    m_size = std::max(m_size, offset + count);
}

void FreshFile::flush()
{
    orFail("Writing the file failed", [&] { m_file->write(m_waitingAt, m_waiting.data(), m_waiting.size()); });
    m_waitingAt += m_waiting.size();
    m_waiting.clear();
}

void FreshFile::commit()
{
    flush();
    orFail("The file can't be replaced", [&] { m_file->renameOver(m_target); });
    m_file.reset();
}

} // namespace files
