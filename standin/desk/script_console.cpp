#include "standin/desk/script_console.h"

#include "standin/desk/script.h"
#include "standin/text.h"

namespace desk::script {

Console::Console(const std::filesystem::path& log) : m_handle(GetStdHandle(STD_OUTPUT_HANDLE)), m_owned(!log.empty())
{
    if (!m_owned)
        return;
    m_handle = CreateFileW(log.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                           nullptr);
    if (m_handle == INVALID_HANDLE_VALUE)
        throw ScriptError("the log " + standin::toUtf8(log.wstring()) + " can't be written");
}

Console::~Console()
{
    if (m_owned)
        CloseHandle(m_handle);
}

void Console::line(const std::wstring& text)
{
    const std::lock_guard lock(m_mutex);
    const std::string bytes = standin::toUtf8(text) + "\n";
    DWORD written = 0;
    WriteFile(m_handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

} // namespace desk::script
