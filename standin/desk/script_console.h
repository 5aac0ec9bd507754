#pragma once

#include <windows.h>
#include <filesystem>
#include <mutex>
#include <string>

namespace desk::script {

/// Where a run says what it does: the standard output, or a file. Lines come from several threads.
class Console
{
public:
    /// Empty path: the standard output. Throws ScriptError if the file can't be made.
    explicit Console(const std::filesystem::path& log);
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    void line(const std::wstring& text);

private:
    std::mutex m_mutex;
    HANDLE m_handle;
    bool m_owned;
};

} // namespace desk::script
