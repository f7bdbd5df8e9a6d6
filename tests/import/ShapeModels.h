#pragma once

#include <filesystem>
#include <string>

namespace qor::import::testing {

/// Writes a machine: two frames, each with three fixings of one bolt and one nut, on one plate. 18
/// nodes, 6 parts, 3 of them with a shape. The bolt is red with one blue face; the second frame's
/// nodes are coloured green as a whole; the nut of the first fixing is yellow as an instance.
/// Millimetres are those of the geometry whatever \p unit
/// ("MM", "INCH", "M") the file is in.
void writeStepMachine(const std::filesystem::path& file, const std::string& unit);

/// A box of 10 x 20 x 30 mm as IGES in \p unit.
void writeIgesBox(const std::filesystem::path& file, const std::string& unit);

/// Two placements of one cylinder (radius 5, height 10) 40 mm apart, as BREP.
void writeBrepCylinders(const std::filesystem::path& file);

/// A grid of \p count instances of one part, as STEP.
void writeStepGrid(const std::filesystem::path& file, int count);

/// Four boxes as STEP with substances: "Stainless steel" without a colour, "Optical glass" in blue,
/// "Unobtainium" without a colour, and "Unobtainium" in red.
void writeStepSubstances(const std::filesystem::path& file);

} // namespace qor::import::testing
