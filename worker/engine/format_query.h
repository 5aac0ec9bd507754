#pragma once

#include "worker/engine/request.h"

namespace worker {

/// Gives the file dialog's filter with one row for each format that can be written, the index of the row in question
/// and that row's format number. Index -1 becomes the row of the file's own format: by its content, else by its
/// extension, else row 0. Throws ImagingError for an index that no row has.
void answerFormatQuery(FormatQuery& query);

} // namespace worker
