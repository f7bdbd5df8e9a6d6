#pragma once

#include "workbench/automation/Json.h"

class Qor2DBagRep;
class Qor3DBagRep;
struct QorMathPoint2D;
struct QorMathVector;

namespace qor::automation {

[[nodiscard]] Json toJson(const QorMathPoint2D& point);
[[nodiscard]] Json toJson(const QorMathVector& vector);
/// The shortest decimal number that stands for it, so that 0.2 reads 0.2.
[[nodiscard]] Json toJson(float number);
/// The first \p count floats.
[[nodiscard]] Json toJson(const float* numbers, int count);

/// What is shown of the children of a root, recursively; what is hidden is left out.
[[nodiscard]] Json readReps(const Qor2DBagRep& root);
[[nodiscard]] Json readReps(const Qor3DBagRep& root);

} // namespace qor::automation
