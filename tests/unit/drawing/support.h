#pragma once

#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>
#include <string_view>

#include "drawing/drawing_file.h"
#include "tests/support/files.h"
#include "tests/support/python.h"

namespace drawing::test {

/// The text of a DXF file from lines "code value", which are easier to read.
inline std::string fromPairs(std::string_view pairs)
{
    std::istringstream lines{std::string(pairs)};
    std::string result;
    for (std::string line; std::getline(lines, line);) {
        const auto begin = line.find_first_not_of(' ');
        if (begin != std::string::npos) {
            const auto space = line.find(' ', begin);
            result += line.substr(begin, space - begin) + "\n";
            result += (space == std::string::npos ? "" : line.substr(space + 1)) + "\n";
        }
    }
    return result;
}

/// A file of the release 12 that has these entities and nothing else.
inline std::string entitiesFile(std::string_view pairs)
{
    return fromPairs("0 SECTION\n2 ENTITIES\n" + std::string(pairs) + "\n0 ENDSEC\n0 EOF");
}

/// The only entity of the model space.
template <class T> const T& onlyEntity(const Document& document)
{
    const auto& entities = document.modelSpace().entities;
    if (entities.size() != 1) {
        throw std::runtime_error("the model space holds " + std::to_string(entities.size()) + " entities, not one");
    }
    const T* found = document.find<T>(entities[0]);
    if (!found) {
        throw std::runtime_error("the entity is of another kind: " + std::string(document.find(entities[0])->name()));
    }
    return *found;
}

/// The groups of a written file from the first record of that name to the next record, one "code value" a line.
inline std::string writtenRecord(const std::string& file, const std::string& name)
{
    std::istringstream lines(file);
    std::string result;
    std::string code;
    std::string value;
    while (std::getline(lines, code) && std::getline(lines, value)) {
        code.erase(0, code.find_first_not_of(' '));
        if (code == "0" && !result.empty()) {
            return result;
        }
        if (!result.empty() || (code == "0" && value == name)) {
            result += code + " " + value + "\n";
        }
    }
    return result;
}

/// Runs a Python script of the tests' folder; `output` gets what it prints. True if it found nothing wrong.
inline bool runScript(const std::string& script, const std::string& arguments, std::string& output)
{
    return runPython("tests/unit/drawing/" + script, arguments, output);
}

} // namespace drawing::test
