// Drawings in the host's binary form, read by the independent programs of scripts/read-dwg.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/files.h"

struct ReadersAnswer
{
    bool leftOut = false; // the programs are not there; `said` tells why
    bool faultless = false;
    std::string said; // a line of JSON for each file
};

inline ReadersAnswer readWithIndependentReaders(const std::vector<std::filesystem::path>& drawings)
{
    const TemporaryFolder folder;
    const std::string log = (folder / "log").string();
    std::string command = "env -u LD_PRELOAD \"" HALVORAN_SOURCE_DIR "/scripts/read-dwg\"";
    for (const auto& drawing : drawings) {
        command += " \"" + drawing.string() + "\"";
    }
    constexpr int leftOut = 77;
    const int status = std::system((command + " > \"" + log + "\" 2>&1").c_str());
    return {WEXITSTATUS(status) == leftOut, status == 0, contentOf(log)};
}
