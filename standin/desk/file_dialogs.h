#pragma once

#include <windows.h>
#include <filesystem>
#include <optional>
#include <string>

namespace desk {

/// Filters in the form that the system's file dialogs take.
inline constexpr wchar_t drawingFilter[] = L"Drawings (*.dxf;*.dwg)\0*.dxf;*.dwg\0All files (*.*)\0*.*\0";
inline constexpr wchar_t moduleFilter[] = L"Modules (*.arx)\0*.arx\0All files (*.*)\0*.*\0";

/// The path that the user chose; nothing if he gave up.
std::optional<std::filesystem::path> askFileToOpen(HWND owner, const wchar_t* title, const wchar_t* filter,
                                                   const std::filesystem::path& folder);
/// `preset` may be empty; the extension is added to a name without one.
std::optional<std::filesystem::path> askFileToSave(HWND owner, const wchar_t* title, const wchar_t* filter,
                                                   const std::filesystem::path& preset, const wchar_t* extension);

} // namespace desk
