#include "standin/desk/script.h"

#include <algorithm>
#include <cwctype>
#include <fstream>
#include <iterator>

#include "standin/desk/script_player.h"
#include "standin/text.h"

namespace desk::script {
namespace {

std::wstring trimmed(const std::wstring& line)
{
    const auto first = line.find_first_not_of(L" \t\r");
    if (first == std::wstring::npos)
        return {};
    return line.substr(first, line.find_last_not_of(L" \t\r") - first + 1);
}

bool isDirective(const std::wstring& line)
{
    return line.size() > 1 && line[0] == L'@' && std::iswalpha(line[1]); // "@5,5" is a relative point, to be typed
}

Action actionOf(const std::wstring& line, const std::filesystem::path& folder)
{
    if (!isDirective(line))
        return [line](Player& player) { player.typeLine(line); };
    Words words(std::wstring_view(line).substr(1), folder);
    return readDirective(words);
}

} // namespace

std::vector<Step> parse(std::string_view text, const std::filesystem::path& folder)
{
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    std::vector<Step> steps;
    int number = 0;
    for (std::size_t start = 0; start < text.size();) {
        const auto end = std::min(text.find('\n', start), text.size());
        const std::wstring line = trimmed(standin::fromUtf8(text.substr(start, end - start)));
        start = end + 1;
        ++number;
        if (line.empty() || line.front() == L';')
            continue;
        try {
            steps.push_back({number, line, actionOf(line, folder)});
        } catch (const ScriptError& error) {
            throw ScriptError("line " + std::to_string(number) + ": " + error.what());
        }
    }
    return steps;
}

std::vector<Step> load(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (!stream)
        throw ScriptError("the script " + standin::toUtf8(file.wstring()) + " can't be read");
    return parse(text, std::filesystem::absolute(file).parent_path());
}

} // namespace desk::script
