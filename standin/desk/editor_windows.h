#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "standin/host.h"

namespace desk {

/// What the editor and its parts need of the desk's windows.
class EditorWindows
{
public:
    virtual ~EditorWindows() = default;

    /// A line of the command line's transcript.
    virtual void print(const std::wstring& line) = 0;
    virtual void showPrompt(const std::wstring& prompt) = 0;
    virtual std::wstring typedText() = 0;
    virtual void setTypedText(const std::wstring& text) = 0;

    /// What was painted no longer holds: the drawing itself, the part of it that shows, what lies over it.
    virtual void drawingChanged() = 0;
    virtual void viewChanged() = 0;
    virtual void overlayChanged() = 0;
    /// A drawing was opened, shown, saved or closed, or a command began or ended.
    virtual void stateChanged() = 0;

    /// Has Editor::processInput called from the message loop.
    virtual void wake() = 0;
    /// Waits for a message and handles it; false when the program is to end.
    virtual bool pumpMessage() = 0;

    virtual std::optional<std::filesystem::path> askForDrawing(bool toSave) = 0;
    virtual std::optional<std::filesystem::path> askForModule() = 0;
    /// IDYES, IDNO or IDCANCEL.
    virtual int askToSave(const std::wstring& drawing) = 0;
    /// A drawing was opened from that file, or saved in it.
    virtual void fileUsed(const std::filesystem::path& file) = 0;
    virtual void alert(const std::wstring& text) = 0;
    virtual void showHelp() = 0;
    /// How long paintings took since the last report.
    virtual void reportFrameTimes() = 0;
    /// Ends the program once the running command has ended; changed drawings are asked about.
    virtual void close() = 0;
    /// Each drawing has a window of its own, which is made when the drawing is shown first. The one that is shown
    /// covers the others.
    virtual void showDrawingWindow(standin::DrawingId drawing) = 0;
    virtual void closeDrawingWindow(standin::DrawingId drawing) = 0;
};

} // namespace desk
