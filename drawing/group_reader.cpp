#include "drawing/group_reader.h"

#include <algorithm>

#include "drawing/error.h"
#include "drawing/numbers.h"

namespace drawing {

namespace {

constexpr std::size_t longestLine = 1u << 20;
constexpr int lowestCode = -5;
constexpr int highestCode = 1071;
constexpr int commentCode = 999;
constexpr std::size_t mostGroups = 50'000'000;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

} // namespace

GroupReader::GroupReader(std::string_view bytes) : m_rest(bytes)
{
    if (m_rest.starts_with(byteOrderMark)) {
        m_rest.remove_prefix(byteOrderMark.size());
    }
}

std::optional<std::string_view> GroupReader::nextLine()
{
    if (m_rest.empty()) {
        return std::nullopt;
    }
    ++m_line;
    const auto end = m_rest.find('\n');
    std::string_view line = m_rest.substr(0, end);
    m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    if (line.size() > longestLine) {
        throw DrawingError(m_line, "a line is longer than any drawing has");
    }
    return line;
}

std::optional<FileGroup> GroupReader::next()
{
    while (const auto codeLine = nextLine()) {
        if (++m_groups > mostGroups) {
            throw DrawingError(m_line, "the file has more groups than can be held");
        }
        const auto code = parseInteger(*codeLine);
        if (!code || *code < lowestCode || *code > highestCode) {
            constexpr std::size_t shownFlag = 40;
            throw DrawingError(m_line, "\"" + std::string(codeLine->substr(0, shownFlag)) + "\" is no group code");
        }
        const auto value = nextLine();
        if (!value) {
            throw DrawingError(m_line, "the file ends in the middle of a group");
        }
        if (*code != commentCode) {
            return FileGroup{*code, *value, m_line};
        }
    }
    return std::nullopt;
}

FileSurvey surveyFile(std::string_view bytes)
{
    FileSurvey survey;
    survey.byteOrderMark = bytes.starts_with(byteOrderMark);
    GroupReader reader(bytes);
    std::string_view variable;
    while (const auto group = reader.next()) {
        if (group->code == 0 && trimmed(group->value) == "EOF") {
            break; // what follows is no part of the drawing
        }
        if (group->code == 9) {
            variable = trimmed(group->value);
        } else if (group->code == 1 && variable == "$ACADVER") {
            survey.release = trimmed(group->value);
            variable = {};
        } else if (group->code == 3 && variable == "$DWGCODEPAGE") {
            survey.codePage = trimmed(group->value);
            variable = {};
        } else if (group->code == 0) {
            variable = {};
        } else if ((group->code == 5 || group->code == 105) && variable != "$HANDSEED") {
            // Some fives are names in old files, and data in new ones. An object with a handle above the bound is
            // given a new one.
            const Handle handle = parseHandle(group->value).value_or(0);
            survey.highestHandle = std::max(survey.highestHandle, handle <= highestHandleTaken ? handle : 0);
        }
    }
    return survey;
}

} // namespace drawing
