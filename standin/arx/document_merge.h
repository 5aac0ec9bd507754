// Taking entities from one drawing into another.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string_view>

#include "drawing/document.h"

namespace standin {

/// A drawing of its own with these entities of the model space, in their order, under their handles, with all that they
/// refer to; images that none of them shows are left out. The base point becomes its point of insertion.
drawing::Document extractEntities(const drawing::Document& source, const std::set<drawing::Handle>& entities,
                                  const drawing::Vector3& basePoint);

/// Whether an image definition of the target and one of the source, of one stored path, show one and the same file.
using ShowOneFile = std::function<bool(drawing::Handle target, drawing::Handle source)>;

/// Adds the source's model space to the target's, on top, with the layers, linetypes, text styles, blocks and image
/// definitions that the target has not. Where the target has one of the name, its own holds; but nameless blocks, and
/// image definitions of another file, are added under a free name. An entity of an unread kind that refers to other
/// objects is left out, as its references would point nowhere. Returns the image definitions that were added, each by
/// its handle in the source.
std::map<drawing::Handle, drawing::Handle> mergeModelSpace(drawing::Document& target, const drawing::Document& source,
                                                           const ShowOneFile& showOneFile);

} // namespace standin
