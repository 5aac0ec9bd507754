#include "standin/desk/options.h"

#include "standin/desk/coordinate_input.h"
#include "standin/text.h"

namespace desk {
namespace {

int positiveNumber(const std::wstring& text, const char* option)
{
    const auto value = parseNumber(text);
    if (!value || *value < 1 || *value > 1e6)
        throw OptionError(std::string(option) + " wants a positive number, not \"" + standin::toUtf8(text) + "\"");
    return static_cast<int>(*value);
}

} // namespace

const wchar_t* const usage = L"halvoran-desk [options] [DRAWING]\n"
                             L"  --module PATH    loads a module at the start; may be given more than once\n"
                             L"  --script FILE    plays a script and ends: 0 all held, 1 a miss, 2 a script error\n"
                             L"  --log FILE       what a script's run says goes there instead of the standard output\n"
                             L"  --limit SECONDS  the longest that a script's run may take (300)\n"
                             L"  --size WxH       the main window's size in pixels\n";

Options parseOptions(const std::vector<std::wstring>& arguments)
{
    Options options;
    std::size_t next = 0;
    const auto valueOf = [&](const std::wstring& option) {
        if (next >= arguments.size())
            throw OptionError(standin::toUtf8(option) + " wants a value");
        return arguments[next++];
    };
    while (next < arguments.size()) {
        const std::wstring& argument = arguments[next++];
        if (argument == L"--module") {
            options.modules.push_back(valueOf(argument));
        } else if (argument == L"--script") {
            options.script = valueOf(argument);
        } else if (argument == L"--log") {
            options.log = valueOf(argument);
        } else if (argument == L"--limit") {
            options.runLimitSeconds = positiveNumber(valueOf(argument), "--limit");
        } else if (argument == L"--size") {
            const std::wstring size = valueOf(argument);
            const auto cross = size.find(L'x');
            if (cross == std::wstring::npos)
                throw OptionError("--size wants WIDTHxHEIGHT");
            options.size.width = positiveNumber(size.substr(0, cross), "--size");
            options.size.height = positiveNumber(size.substr(cross + 1), "--size");
        } else if (argument == L"--help") {
            options.help = true;
        } else if (argument.starts_with(L"--")) {
            throw OptionError("there is no option " + standin::toUtf8(argument));
        } else if (options.drawing.empty()) {
            options.drawing = argument;
        } else {
            throw OptionError("only one drawing can be opened");
        }
    }
    return options;
}

} // namespace desk
