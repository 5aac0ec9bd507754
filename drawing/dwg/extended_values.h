// Groups packed as bytes: the extended data of objects, and the content of extended records.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drawing/dwg/record_names.h"
#include "drawing/field_visitor.h"
#include "drawing/text_encoding.h"

namespace drawing::dwg {

/// The extended data that one application has hung on an object: the groups 1000 and up, without the group 1001 that
/// names the application. Throws DrawingError if the bytes are of another form.
Groups valuesOfExtendedData(std::string_view bytes, const TextEncoding& encoding, const RecordNames& names);
std::string bytesOfExtendedData(const Groups& groups, const TextEncoding& encoding, RecordNames& names, int codePage);

/// The content of an extended record. Throws DrawingError if the bytes are of another form.
Groups valuesOfRecord(std::string_view bytes, const TextEncoding& encoding);
/// `referred`: the objects that the groups refer to, of which the form has a list besides.
std::string bytesOfRecord(const std::vector<PlacedGroup>& groups, const TextEncoding& encoding,
                          std::vector<Handle>& referred);

} // namespace drawing::dwg
