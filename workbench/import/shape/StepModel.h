#pragma once

#include "workbench/document/product/Product.h"

#include <StepData_StepModel.hxx>

namespace qor::import {

/// Throws ImportError if the assembly structure is cyclic, deeper than maximumTreeDepth levels, or
/// has so many occurrences once repeated sub-assemblies are unfolded that no tree of them could be
/// held.
void checkStepAssembly(const Handle(StepData_StepModel) & model);

/// The length unit of the first geometric context. Throws ImportError if it is no sensible length.
[[nodiscard]] document::SourceUnit lengthUnitOf(const Handle(StepData_StepModel) & model);

/// How many entities could not be read and which is the first, as a clause; empty when all could.
[[nodiscard]] std::string damageIn(const Handle(Interface_InterfaceModel) & model);

/// A unit, or an ImportError that says that \p millimetres is no sensible length of one.
[[nodiscard]] document::SourceUnit sensibleUnit(const std::string& name, double millimetres);

} // namespace qor::import
