#pragma once

#include <string>
#include <vector>

#include "drawing/document.h"
#include "drawing/dwg/class_section.h"
#include "drawing/dwg/header_section.h"
#include "drawing/dwg/object_encoder.h"

namespace drawing::dwg {

/// What a file is made of.
struct FileParts
{
    const Document& document; // for header variables and preview
    const TextEncoding& encoding;
    int codePage = 0; // by the form's own count
    RecordNames& names;
    Roots roots;
    const std::vector<ObjectClass>& classes;
    std::vector<EncodedObject> objects; // in the order of their handles
};

/// The bytes of the file: part after part in the order in which the host writes them. Throws DrawingError if they are
/// more than the form has addresses for.
std::string assembleFile(const FileParts& parts);

} // namespace drawing::dwg
