// DXF files in binary form: the same groups as in text form, with codes and numbers as bytes, the lowest first.
#pragma once

#include <string>
#include <string_view>

namespace drawing {

bool isBinaryForm(std::string_view bytes);

/// The file in text form. Codes take two bytes, or, in files of the release 12, one. Throws DrawingError.
std::string textFromBinary(std::string_view bytes);

/// What a file in binary form begins with.
std::string_view binarySentinel();
/// Adds a group, its code in two bytes; the value is that of the text form, in the file's encoding. Throws DrawingError
/// if it is none that its code can have.
void appendBinaryGroup(std::string& bytes, int code, std::string_view value);

} // namespace drawing
