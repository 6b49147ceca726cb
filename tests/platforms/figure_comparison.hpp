/// Figures of one platform beside those of another.
#pragma once

namespace platforms {

/// Compares two files that platform_figures printed and prints, group by group, how far they are apart.
/// @return whether every number is within its bound and every text the same
bool CompareFigures(const char* referencePath, const char* otherPath);

}  // namespace platforms
