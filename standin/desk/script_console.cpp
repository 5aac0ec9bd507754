#include "standin/desk/script_console.h"

#include "standin/desk/script.h"
#include "standin/desk/text_encoding.h"

namespace desk::script {

Console::Console(const std::filesystem::path& log) : handle_(GetStdHandle(STD_OUTPUT_HANDLE)), owned_(!log.empty())
{
    if (!owned_)
        return;
    handle_ = CreateFileW(log.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                          nullptr);
    if (handle_ == INVALID_HANDLE_VALUE)
        throw ScriptError("the log " + toUtf8(log.wstring()) + " can't be written");
}

Console::~Console()
{
    if (owned_)
        CloseHandle(handle_);
}

void Console::line(const std::wstring& text)
{
    const std::lock_guard lock(mutex_);
    const std::string bytes = toUtf8(text) + "\n";
    DWORD written = 0;
    WriteFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

} // namespace desk::script
