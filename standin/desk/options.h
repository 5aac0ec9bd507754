#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "imaging/geometry.h"

namespace desk {

/// What the program was started with.
struct Options
{
    std::vector<std::filesystem::path> modules;
    std::filesystem::path script, log, drawing; // empty if not given
    int runLimitSeconds = 300;
    imaging::Size size; // empty if not given
    bool help = false;
};

class OptionError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// arguments: without the program's name. Throws OptionError.
Options parseOptions(const std::vector<std::wstring>& arguments);

/// What --help says.
extern const wchar_t* const usage;

} // namespace desk
