#include "standin/desk/script.h"

#include <windows.h>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <optional>

#include "standin/desk/coordinate_input.h"
#include "standin/desk/text_encoding.h"

namespace desk::script {
namespace {

// The words behind a directive's name, taken one after the other.
class Words
{
public:
    Words(std::wstring_view text, std::filesystem::path folder) : m_rest(text), m_folder(std::move(folder)) {}

    bool atEnd()
    {
        skipBlanks();
        return m_rest.empty();
    }

    // A word, or what stands between two double quotes.
    std::wstring next(const char* what)
    {
        if (atEnd())
            throw ScriptError(std::string(what) + " is missing");
        if (m_rest.front() == L'"')
            return quoted();
        const auto end = std::min(m_rest.find_first_of(L" \t"), m_rest.size());
        std::wstring word(m_rest.substr(0, end));
        m_rest.remove_prefix(end);
        return word;
    }

    // All that is left, without quotes around it. May be empty.
    std::wstring remainder()
    {
        skipBlanks();
        if (!m_rest.empty() && m_rest.front() == L'"')
            return quoted();
        std::wstring text(m_rest);
        m_rest = {};
        return text;
    }

    bool take(std::wstring_view word)
    {
        skipBlanks();
        const auto end = std::min(m_rest.find_first_of(L" \t"), m_rest.size());
        if (m_rest.substr(0, end) != word)
            return false;
        m_rest.remove_prefix(end);
        return true;
    }

    int number(const char* what)
    {
        const std::wstring word = next(what);
        const auto value = parseNumber(word);
        if (!value || *value != static_cast<int>(*value))
            throw ScriptError(std::string(what) + " should be a whole number, not \"" + toUtf8(word) + "\"");
        return static_cast<int>(*value);
    }

    std::vector<double> numbers(std::wstring_view word, std::size_t count, const char* what)
    {
        std::vector<double> values;
        for (std::size_t start = 0; start <= word.size();) {
            const auto comma = std::min(word.find(L',', start), word.size());
            const auto value = parseNumber(std::wstring(word.substr(start, comma - start)));
            if (!value)
                break;
            values.push_back(*value);
            start = comma + 1;
        }
        if (values.size() != count ||
            static_cast<std::size_t>(std::count(word.begin(), word.end(), L',')) != count - 1) {
            throw ScriptError(std::string(what) + " should be " + std::to_string(count) +
                              " numbers parted by commas, not \"" + toUtf8(std::wstring(word)) + "\"");
        }
        return values;
    }

    Vec2 point()
    {
        const auto values = numbers(next("the drawing point"), 2, "a drawing point");
        return {values[0], values[1]};
    }

    Place place()
    {
        std::wstring word = next("the place");
        static constexpr std::wstring_view viewPrefix = L"view:";
        const bool inView = word.starts_with(viewPrefix);
        const auto values =
            numbers(inView ? std::wstring_view(word).substr(viewPrefix.size()) : std::wstring_view(word), 2, "a place");
        return {{values[0], values[1]}, inView};
    }

    // "X,Y" and "view:X,Y" begin a place; words such as "shift" do not.
    bool placeFollows()
    {
        skipBlanks();
        return !m_rest.empty() && (std::iswdigit(m_rest.front()) || m_rest.front() == L'-' || m_rest.front() == L'+' ||
                                   m_rest.front() == L'.' || m_rest.starts_with(L"view:"));
    }

    std::filesystem::path path()
    {
        const std::wstring text = remainder();
        if (text.empty())
            throw ScriptError("the path is missing");
        return (m_folder / std::filesystem::path(text)).lexically_normal().make_preferred();
    }

private:
    void skipBlanks() { m_rest.remove_prefix(std::min(m_rest.find_first_not_of(L" \t"), m_rest.size())); }

    std::wstring quoted()
    {
        const auto end = m_rest.find(L'"', 1);
        if (end == std::wstring_view::npos)
            throw ScriptError("the closing quotation mark is missing");
        std::wstring text(m_rest.substr(1, end - 1));
        m_rest.remove_prefix(end + 1);
        return text;
    }

    std::wstring_view m_rest;
    std::filesystem::path m_folder;
};

Action parseClick(Words& words)
{
    Click click{words.place()};
    while (!words.atEnd()) {
        if (words.take(L"right")) {
            click.right = true;
        } else if (words.take(L"shift")) {
            click.shift = true;
        } else if (words.take(L"ctrl")) {
            click.control = true;
        } else if (words.take(L"double")) {
            click.twice = true;
        } else {
            throw ScriptError("after the place only right, shift, ctrl and double may stand");
        }
    }
    return click;
}

// The keys that are held, at the end of a line.
template <class WithKeys> void parseKeys(Words& words, WithKeys& step, const char* mistake)
{
    while (!words.atEnd()) {
        if (words.take(L"shift")) {
            step.shift = true;
        } else if (words.take(L"ctrl")) {
            step.control = true;
        } else {
            throw ScriptError(mistake);
        }
    }
}

Action parseDrag(Words& words)
{
    Drag drag;
    while (words.placeFollows())
        drag.places.push_back(words.place());
    if (drag.places.size() < 2)
        throw ScriptError("a drag needs two places or more");
    parseKeys(words, drag, "after the places only shift and ctrl may stand");
    return drag;
}

// Move, Press and Release.
template <class AtPlace> Action parseAtPlace(Words& words)
{
    AtPlace step{words.place()};
    parseKeys(words, step, "after the place only shift and ctrl may stand");
    return step;
}

Action parseSize(Words& words)
{
    const std::wstring word = words.next("the size");
    const auto cross = std::min(word.find(L'x'), word.size());
    const auto width = parseNumber(word.substr(0, cross));
    const auto height = parseNumber(word.substr(std::min(cross + 1, word.size())));
    if (!width || !height || *width < 1 || *height < 1 || *width > 10'000 || *height > 10'000)
        throw ScriptError("a size should be WIDTHxHEIGHT, not \"" + toUtf8(word) + "\"");
    return ResizeView{{static_cast<int>(*width), static_cast<int>(*height)}};
}

Action parseKey(Words& words)
{
    static const std::map<std::wstring, unsigned> named = {
        {L"ESC", VK_ESCAPE},  {L"ENTER", VK_RETURN}, {L"DEL", VK_DELETE},  {L"BACK", VK_BACK}, {L"TAB", VK_TAB},
        {L"SPACE", VK_SPACE}, {L"LEFT", VK_LEFT},    {L"RIGHT", VK_RIGHT}, {L"UP", VK_UP},     {L"DOWN", VK_DOWN},
        {L"HOME", VK_HOME},   {L"END", VK_END},      {L"PGUP", VK_PRIOR},  {L"PGDN", VK_NEXT}, {L"F1", VK_F1},
        {L"F2", VK_F2},       {L"F3", VK_F3},        {L"F4", VK_F4},       {L"F5", VK_F5},     {L"F6", VK_F6},
        {L"F7", VK_F7},       {L"F8", VK_F8},        {L"F9", VK_F9},       {L"F10", VK_F10},   {L"F11", VK_F11},
        {L"F12", VK_F12},
    };
    const std::wstring name = words.next("the key");
    if (const auto found = named.find(name); found != named.end())
        return Key{found->second, 0};
    if (name.size() != 1)
        throw ScriptError("there is no key \"" + toUtf8(name) + "\"");
    return Key{0, name.front()};
}

Action parseCheck(Words& words)
{
    const int id = words.number("the control's id");
    const int state = words.number("the check mark");
    if (state != 0 && state != 1)
        throw ScriptError("a check mark is 0 or 1");
    return Check{id, state == 1};
}

Action parseAnswer(Words& words)
{
    static const std::map<std::wstring, int> buttons = {
        {L"yes", IDYES}, {L"no", IDNO}, {L"ok", IDOK}, {L"cancel", IDCANCEL}};
    const auto found = buttons.find(words.next("the answer"));
    if (found == buttons.end())
        throw ScriptError("an answer is yes, no, ok or cancel");
    return Answer{found->second};
}

Action parseNegativeExpectation(Words& words)
{
    if (words.take(L"raster"))
        return ExpectRaster{false};
    if (words.take(L"tool"))
        return ExpectNoTool{};
    if (words.take(L"selection"))
        return ExpectNoSelection{};
    if (words.take(L"box"))
        return ExpectNoBox{};
    if (words.take(L"file"))
        return ExpectFile{words.path(), false};
    throw ScriptError("\"no\" goes with raster, tool, selection, box or file");
}

Action parseExpectedPixel(Words& words)
{
    const Vec2 at = words.point();
    if (words.take(L"ink"))
        return ExpectPixel{at, true};
    if (words.take(L"paper"))
        return ExpectPixel{at, false};
    throw ScriptError("a pixel is ink or paper");
}

Action parseExpectation(Words& words)
{
    if (words.take(L"no"))
        return parseNegativeExpectation(words);
    if (words.take(L"raster"))
        return ExpectRaster{true};
    if (words.take(L"tool"))
        return ExpectTool{words.number("the tool's number")};
    if (words.take(L"box"))
        return ExpectBox{words.remainder()};
    if (words.take(L"text")) {
        const int id = words.number("the control's id");
        return ExpectText{id, words.remainder()};
    }
    if (words.take(L"file"))
        return ExpectFile{words.path(), true};
    if (words.take(L"entities"))
        return ExpectEntities{words.number("the number of entities")};
    if (words.take(L"picked"))
        return ExpectPicked{words.number("the number of entities")};
    if (words.take(L"pixel"))
        return parseExpectedPixel(words);
    if (words.take(L"selection")) {
        const auto edges = words.numbers(words.next("the selection's box"), 4, "the selection's box");
        return ExpectSelection{{static_cast<int>(edges[0]), static_cast<int>(edges[1]), static_cast<int>(edges[2]),
                                static_cast<int>(edges[3])}};
    }
    if (words.take(L"said"))
        return ExpectSaid{words.remainder()};
    throw ScriptError("this can't be expected: \"" + toUtf8(words.remainder()) + "\"");
}

int parsePushId(Words& words)
{
    if (words.take(L"ok"))
        return IDOK;
    if (words.take(L"cancel"))
        return IDCANCEL;
    return words.number("the button's id");
}

Action parseDirective(const std::wstring& name, Words& words)
{
    static const std::map<std::wstring, std::function<Action(Words&)>> directives = {
        {L"click", parseClick},
        {L"drag", parseDrag},
        {L"move", parseAtPlace<Move>},
        {L"press", parseAtPlace<Press>},
        {L"release", parseAtPlace<Release>},
        {L"size", parseSize},
        {L"key", parseKey},
        {L"button", [](Words& w) { return Action(Button{w.number("the button's id")}); }},
        {L"drop", [](Words& w) { return Action(DropArrow{w.number("the button's id")}); }},
        {L"menu", [](Words& w) { return Action(MenuEntry{w.number("the entry's id")}); }},
        {L"dialog", [](Words& w) { return Action(WaitForDialog{w.next("the dialog's title")}); }},
        {L"set",
         [](Words& w) {
             const int id = w.number("the control's id");
             return Action(SetText{id, w.remainder()});
         }},
        {L"check", parseCheck},
        {L"choose",
         [](Words& w) {
             const int id = w.number("the control's id");
             return Action(Choose{id, w.number("the index")});
         }},
        {L"slide",
         [](Words& w) {
             const int id = w.number("the control's id");
             return Action(Slide{id, w.number("the position")});
         }},
        {L"push", [](Words& w) { return Action(Push{parsePushId(w)}); }},
        {L"file", [](Words& w) { return Action(PickFile{w.path()}); }},
        {L"answer", parseAnswer},
        {L"wait", [](Words& w) { return Action(Wait{w.number("the milliseconds")}); }},
        {L"idle", [](Words&) { return Action(Idle{}); }},
        {L"shot", [](Words& w) { return Action(Shot{w.path()}); }},
        {L"expect", parseExpectation},
    };
    const auto found = directives.find(name);
    if (found == directives.end())
        throw ScriptError("there is no directive \"@" + toUtf8(name) + "\"");
    Action action = found->second(words);
    if (!words.atEnd())
        throw ScriptError("\"" + toUtf8(words.remainder()) + "\" is too much");
    return action;
}

std::optional<Action> parseLine(const std::wstring& line, const std::filesystem::path& folder)
{
    if (line.empty() || line.front() == L';')
        return std::nullopt;
    if (line.front() != L'@' || line.size() == 1 || !std::iswalpha(line[1]))
        return Type{line}; // "@5,5" is a relative point, to be typed
    const auto end = std::min(line.find_first_of(L" \t"), line.size());
    Words words(std::wstring_view(line).substr(end), folder);
    return parseDirective(line.substr(1, end - 1), words);
}

std::wstring trimmed(const std::wstring& line)
{
    const auto first = line.find_first_not_of(L" \t\r");
    if (first == std::wstring::npos)
        return {};
    return line.substr(first, line.find_last_not_of(L" \t\r") - first + 1);
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
        const std::wstring line = trimmed(fromUtf8(text.substr(start, end - start)));
        start = end + 1;
        ++number;
        try {
            if (auto action = parseLine(line, folder))
                steps.push_back({number, line, std::move(*action)});
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
        throw ScriptError("the script " + toUtf8(file.wstring()) + " can't be read");
    return parse(text, std::filesystem::absolute(file).parent_path());
}

} // namespace desk::script
