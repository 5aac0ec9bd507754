// Taking entities from one drawing into another.
#pragma once

#include <set>
#include <string_view>

#include "drawing/document.h"

namespace standin {

/// A drawing of its own with these entities of the model space, in their order, under their handles, with all that they
/// refer to; images that none of them shows are left out. The base point becomes its point of insertion.
drawing::Document extractEntities(const drawing::Document& source, const std::set<drawing::Handle>& entities,
                                  const drawing::Vector3& basePoint);

/// Adds the source's model space to the target's, on top, with the layers, linetypes, text styles, blocks and image
/// definitions that the target has not. Where the target has one of the name, its own holds; but nameless blocks, and
/// image definitions of another file, are added under a free name. An entity of an unread kind that refers to other
/// objects is left out, as its references would point nowhere.
void mergeModelSpace(drawing::Document& target, const drawing::Document& source);

} // namespace standin
