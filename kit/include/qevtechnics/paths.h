/// \file
/// Tool paths in the list of their object, which the technics of all plug-ins share: what each is for.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <qevtechnics/stretches.h>

namespace qev::kit {

/// The attribute of a tool path that says what it is for: one of the values below. Paths without it are
/// nobody's concern but their maker's.
inline constexpr char kPathRole[] = "PathRole";

inline constexpr char kLeadInRole[] = "lead-in";   ///< ends where the tool meets the contour
inline constexpr char kLeadOutRole[] = "lead-out"; ///< starts where the tool leaves the contour
inline constexpr char kOverlapRole[] = "overlap";  ///< a stretch of the contour that is cut a second time
inline constexpr char kCutRole[] = "cut";          ///< a stretch of the contour between two bridges

/// Tool paths that nobody owns yet.
using Paths = std::vector<std::unique_ptr<CCadObject>>;

/// Gives a path its role and appends it; null is left out.
void AddPath(Paths& paths, std::unique_ptr<CCadObject> path, const char* role);

/// Says on an object why technics of a name, as "MicroJoint", have no tool paths there any more; an empty
/// text says that they have.
void SetLostPaths(CCadObject& object, const char* technics, const std::string& why);

/// Why the technics of a name, as "MicroJoint", have no tool paths on an object any more, in the words of
/// whoever makes them; empty when nothing was said.
std::string WhyLostPaths(const CCadObject& object, const char* technics);

/// Whether a tool path has a role.
bool HasRole(const CCadObject& path, const char* role);

/// Where the tool comes to a contour, cuts it twice and leaves it, by the tool paths of its object: a range
/// for each lead-in and lead-out, which starts and ends at one position, and for each overlap. `contour` is
/// the one that stands for the object.
std::vector<math::PosRange> FindEntries(const CCadObject& object, const CCadMultiSegments& contour);

/// The bridges that hold a part in its sheet: what of the contour lies between the object's paths with the
/// role kCutRole. None when there are no such paths. `contour` is the one that stands for the object.
std::vector<Stretch> FindBridges(const CCadObject& object, const CCadMultiSegments& contour);

} // namespace qev::kit
