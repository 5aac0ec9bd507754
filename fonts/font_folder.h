#pragma once

#include <windows.h>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "drawing/glyphs.h"
#include "fonts/font_names.h"
#include "fonts/system_typeface.h"

namespace fonts {

/// The TrueType fonts of a folder and of the system. The folder's are known to this process alone, from the first text
/// on until the object goes.
class FontFolder : public drawing::FontSource
{
public:
    explicit FontFolder(std::filesystem::path folder) : m_folder(std::move(folder)) {}
    ~FontFolder() override;
    FontFolder(const FontFolder&) = delete;
    FontFolder& operator=(const FontFolder&) = delete;

    /// Of a file: the folder's file of that name, or the family that such a file is known to hold. Of a family: the
    /// folder's, the system's, one of the same widths, or a plain one. Null for shape files.
    drawing::Typeface* find(const drawing::FontRequest& request) override;

private:
    void open();
    drawing::Typeface* findFile(const std::wstring& name);
    drawing::Typeface* findFamily(const std::wstring& name, bool bold, bool italic);
    drawing::Typeface* typeface(const std::wstring& family, bool bold, bool italic);

    std::filesystem::path m_folder;
    bool m_open = false;
    std::vector<std::filesystem::path> m_added;
    std::map<std::wstring, FontNames> m_files; // by the file's name without extension, in capitals
    std::map<std::tuple<std::wstring, bool, bool>, std::unique_ptr<SystemTypeface>> m_typefaces;
};

/// The folder Fonts beside this process's program.
std::filesystem::path folderBesideProgram();

} // namespace fonts
