#pragma once

#include <string>

namespace qor::imaging {

/// A colour profile for sRGB (IEC 61966-2-1) as picture files carry it: three primaries adapted to
/// D50 and the curve as a table. Layout: ICC.1:2001-04, version 2.4.
std::string makeSrgbProfile();

} // namespace qor::imaging
