#include "workbench/import/shape/StepModel.h"

#include "workbench/import/model/ImportError.h"

#include <STEPConstruct_UnitContext.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionOrReference.hxx>
#include <StepGeom_GeomRepContextAndGlobUnitAssCtxAndGlobUncertaintyAssCtx.hxx>
#include <StepGeom_GeometricRepresentationContextAndGlobalUnitAssignedContext.hxx>
#include <StepRepr_GlobalUnitAssignedContext.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

namespace qor::import {

namespace {

using Key = const Standard_Transient*;
using Children = std::unordered_map<Key, std::vector<Key>>;

// Beyond this a tree is a trick: nested doubling makes 2^60 occurrences from sixty lines.
constexpr double mostOccurrences = 5e6;
constexpr double smallestUnitMm = 1e-7;
constexpr double largestUnitMm = 1e7;

Children usagesOf(const Handle(StepData_StepModel) & model) {
    Children children;
    for (Standard_Integer i = 1; i <= model->NbEntities(); ++i) {
        const auto usage = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(model->Value(i));
        if (usage.IsNull() || usage->RelatingProductDefinition().IsNull() ||
            usage->RelatedProductDefinition().IsNull())
            continue;
        children[usage->RelatingProductDefinition().get()].push_back(
            usage->RelatedProductDefinition().get());
    }
    return children;
}

// What is below a product definition, itself included.
struct Extent {
    double occurrences = 1;
    int depth = 1;
};

// Measures without recursion: a file may nest deeper than the stack.
class AssemblyMeasure {
public:
    explicit AssemblyMeasure(const Children& children) : children_(children) {}

    void measure(Key root) {
        stack_.push_back(root);
        while (!stack_.empty())
            visit(stack_.back());
    }

private:
    void visit(Key key) {
        if (extents_.contains(key)) {
            stack_.pop_back();
            return;
        }
        const auto found = children_.find(key);
        if (found == children_.end()) {
            extents_[key] = {};
            return;
        }
        open_.try_emplace(key, true);
        bool complete = true;
        for (const Key child : found->second)
            if (!extents_.contains(child)) {
                if (open_.contains(child))
                    throw ImportError("an assembly contains itself");
                stack_.push_back(child);
                complete = false;
                break;
            }
        if (complete)
            close(key, found->second);
    }

    void close(Key key, const std::vector<Key>& children) {
        Extent extent;
        for (const Key child : children) {
            extent.occurrences += extents_[child].occurrences;
            extent.depth = std::max(extent.depth, extents_[child].depth + 1);
        }
        if (extent.depth > document::maximumTreeDepth)
            throw ImportError("its assemblies are nested deeper than " +
                              std::to_string(document::maximumTreeDepth) + " levels");
        if (extent.occurrences > mostOccurrences)
            throw ImportError("its assemblies unfold into more than five million occurrences");
        extents_[key] = extent;
        open_.erase(key);
    }

    const Children& children_;
    std::unordered_map<Key, Extent> extents_;
    std::unordered_map<Key, bool> open_;
    std::vector<Key> stack_;
};

struct NamedUnit {
    double millimetres;
    const char* name;
};

constexpr std::array namedUnits{
    NamedUnit{1, "mm"},       NamedUnit{10, "cm"},       NamedUnit{100, "dm"},
    NamedUnit{1000, "m"},     NamedUnit{1e6, "km"},      NamedUnit{1e-3, "µm"},
    NamedUnit{25.4, "inch"},  NamedUnit{0.0254, "mil"},  NamedUnit{304.8, "foot"},
    NamedUnit{914.4, "yard"}, NamedUnit{1609344, "mile"}};

// The usual name of a unit of that length, or \p otherwise.
std::string usualName(double millimetres, const std::string& otherwise) {
    for (const NamedUnit& unit : namedUnits)
        if (std::abs(millimetres / unit.millimetres - 1) < 1e-6)
            return unit.name;
    return otherwise;
}

} // namespace

void checkStepAssembly(const Handle(StepData_StepModel) & model) {
    const Children children = usagesOf(model);
    AssemblyMeasure measure(children);
    for (const auto& [parent, below] : children)
        measure.measure(parent);
}

std::string damageIn(const Handle(Interface_InterfaceModel) & model) {
    Standard_Integer count = 0;
    Standard_Integer first = 0;
    for (Standard_Integer i = model->NbEntities(); i > 0; --i)
        if (model->IsErrorEntity(i) || model->IsReportEntity(i)) {
            ++count;
            first = i;
        }
    if (count == 0)
        return {};
    const Handle(TCollection_HAsciiString) label = model->StringLabel(model->Value(first));
    return "it is damaged: " + std::to_string(count) +
           " of its entities could not be read, the first is " +
           (label.IsNull() ? std::to_string(first) : label->ToCString());
}

document::SourceUnit sensibleUnit(const std::string& name, double millimetres) {
    if (!(millimetres >= smallestUnitMm && millimetres <= largestUnitMm)) {
        std::ostringstream text;
        text.imbue(std::locale::classic());
        text << "its length unit of " << millimetres << " mm makes no sense";
        throw ImportError(text.str());
    }
    return {usualName(millimetres, name), millimetres};
}

document::SourceUnit lengthUnitOf(const Handle(StepData_StepModel) & model) {
    for (Standard_Integer i = 1; i <= model->NbEntities(); ++i) {
        STEPConstruct_UnitContext units;
        Handle(StepRepr_GlobalUnitAssignedContext) context;
        if (const auto both =
                Handle(StepGeom_GeomRepContextAndGlobUnitAssCtxAndGlobUncertaintyAssCtx)::DownCast(
                    model->Value(i)))
            context = both->GlobalUnitAssignedContext();
        else if (const auto one =
                     Handle(StepGeom_GeometricRepresentationContextAndGlobalUnitAssignedContext)::
                         DownCast(model->Value(i)))
            context = one->GlobalUnitAssignedContext();
        if (context.IsNull())
            continue;
        units.ComputeFactors(context);
        if (units.LengthDone())
            return sensibleUnit("unit", units.LengthFactor());
    }
    return {};
}

} // namespace qor::import
