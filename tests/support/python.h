// Scripts of the project, run by a test.
#pragma once

#include <cstdlib>
#include <string>

#include "tests/support/files.h"

/// Runs a Python script, named from the project's folder; `output` gets what it prints. True if it found nothing wrong.
inline bool runPython(const std::string& script, const std::string& arguments, std::string& output)
{
    const TemporaryFolder folder;
    const std::string log = (folder / "log").string();
    const std::string command = "env -u LD_PRELOAD /usr/bin/python3 \"" HALVORAN_SOURCE_DIR "/" + script + "\" " +
                                arguments + " > \"" + log + "\" 2>&1";
    const int status = std::system(command.c_str());
    output = contentOf(log);
    return status == 0;
}
