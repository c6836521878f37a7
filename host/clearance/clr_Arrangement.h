#pragma once

#include <string>
#include <vector>

#include "host/clearance/clr_Check.h"
#include "host/model/hst_Part.h"

/// Moves parts as "PART=x,y,z" or "PART=x,y,z,rx,ry,rz" say, each on top of its placement: the part
/// is turned by rx, ry and rz degrees about the model's x, y and z axis, in that order, through the
/// centre of its box, then moved by x, y, z in the unit of the model. The name ends at the last
/// "=". Throws `hst_Error`, with the parts as they were, when a text is no move, its part is not
/// there (the message offers the nearest names), or a part is named twice.
void clr_MoveParts(std::vector<hst_Part>& parts, const std::vector<std::string>& moves);

/// The pairs that texts such as "A:B" name, split at the first ":" that leaves two names of parts.
/// Throws `hst_Error` when there is none.
[[nodiscard]] clr_IgnoredPairs clr_FindIgnoredPairs(const std::vector<hst_Part>& parts,
                                                    const std::vector<std::string>& texts);
