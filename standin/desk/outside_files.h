#pragma once

#include <windows.h>
#include <filesystem>
#include <functional>
#include <shellapi.h>
#include <string>

#include "standin/desk/recent_files.h"

namespace desk {

/// What outside_files needs of the desk.
struct OutsideFilesEvents
{
    std::function<void(const std::wstring&)> typed; // for the command line, after what runs has been cancelled
    std::function<void(const std::wstring&)> said;  // a line of the transcript
    std::function<void(const std::wstring&)> alert; // a message box
};

/// Files that come to the desk otherwise than by a dialog or by name: those of the list of recent drawings, those that
/// are dropped on the window, the guide.
class OutsideFiles
{
public:
    explicit OutsideFiles(OutsideFilesEvents events) : m_events(std::move(events)) {}

    const RecentFiles& recent() const { return m_recent; }
    void loadRecent() { m_recent.load(); }
    /// A drawing was opened or saved there.
    void used(const std::filesystem::path& file);
    /// One that is not there any more leaves the list, with a word about it. Nothing beyond the list's end.
    void openRecent(std::size_t index);

    /// Drawings are opened, and the first of the rasters is placed where the user then shows. Ends the drop.
    void takeDropped(HDROP drop);

    /// Opens the guide beside the program; one that is missing is told of, with the place where it should be.
    void openGuide();

private:
    void place(const std::vector<std::filesystem::path>& rasters);

    OutsideFilesEvents m_events;
    RecentFiles m_recent;
};

/// Whether it is a drawing's file, by its name.
bool isDrawingName(const std::filesystem::path& file);

} // namespace desk
