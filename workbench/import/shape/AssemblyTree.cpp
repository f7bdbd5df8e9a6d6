#include "workbench/import/shape/AssemblyTree.h"

#include "workbench/import/model/ImportError.h"
#include "workbench/import/shape/SurfaceMaterials.h"
#include "workbench/import/shape/Tessellation.h"

#include <NCollection_DataMap.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDataStd_TreeNode.hxx>
#include <XCAFDoc.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_GraphNode.hxx>
#include <XCAFDoc_Material.hxx>
#include <XCAFDoc_ShapeTool.hxx>

#include <algorithm>
#include <optional>
#include <vector>

namespace qor::import {

using document::none;
using document::Product;
using document::Transform;

namespace {

constexpr double meshFrom = 0.55;
constexpr double meshTo = 0.93;

std::string utf8(const TCollection_ExtendedString& text) {
    std::string out(static_cast<std::size_t>(text.LengthOfCString()) + 1, '\0');
    auto* bytes = out.data();
    const int length = text.ToUTF8CString(bytes);
    out.resize(static_cast<std::size_t>(std::max(0, length)));
    return out;
}

// The label's name; empty for the place holders that Open CASCADE makes up.
std::string nameOf(const TDF_Label& label) {
    Handle(TDataStd_Name) name;
    if (!label.FindAttribute(TDataStd_Name::GetID(), name))
        return {};
    std::string text = utf8(name->Get());
    return text.starts_with("=>[") ? std::string() : text;
}

// What the file calls the label's substance; empty when it does not say.
std::string substanceOf(const TDF_Label& label) {
    Handle(TDataStd_TreeNode) link;
    if (!label.FindAttribute(XCAFDoc::MaterialRefGUID(), link) || !link->HasFather())
        return {};
    Handle(XCAFDoc_Material) substance;
    if (!link->Father()->Label().FindAttribute(XCAFDoc_Material::GetID(), substance))
        return {};
    const Handle(TCollection_HAsciiString) name = substance->GetName();
    return name.IsNull() ? std::string() : name->ToCString();
}

Transform transformOf(const TopLoc_Location& location) {
    const gp_Trsf trsf = location.Transformation();
    Transform out{};
    for (int row = 1; row <= 3; ++row)
        for (int column = 1; column <= 4; ++column)
            out[static_cast<std::size_t>((row - 1) * 4 + column - 1)] = trsf.Value(row, column);
    return out;
}

class TreeBuilder {
public:
    TreeBuilder(const ShapeDocument& shapes,
                const ImportSettings& settings,
                ImportReport& report,
                Product& product)
        : shapes_(XCAFDoc_DocumentTool::ShapeTool(shapes.document->Main()))
        , colors_(XCAFDoc_DocumentTool::ColorTool(shapes.document->Main()))
        , settings_(settings)
        , report_(report)
        , product_(product)
        , materials_(product) {}

    void build() {
        TDF_LabelSequence roots;
        shapes_->GetFreeShapes(roots);
        for (const TDF_Label& root : roots)
            addNode(root, none);
        meshParts();
    }

private:
    void addNode(const TDF_Label& label, std::int32_t parent) {
        TDF_Label definition = label;
        XCAFDoc_ShapeTool::GetReferredShape(label, definition);
        const auto index = static_cast<std::int32_t>(product_.nodes.size());
        document::Node& node = product_.nodes.emplace_back();
        node.parent = parent;
        node.part = partOf(definition);
        node.name = nameOf(label);
        if (node.name.empty())
            node.name = product_.parts[node.part].name;
        path_.Append(label);
        if (label != definition) {
            node.transform = transformOf(XCAFDoc_ShapeTool::GetLocation(label));
            node.visible = colors_->IsVisible(label);
            node.material = instanceMaterial(label, substanceOf(definition));
        }
        if (path_.Length() > document::maximumTreeDepth)
            throw ImportError("its assemblies are nested deeper than " +
                              std::to_string(document::maximumTreeDepth) + " levels");
        addChildren(definition, index);
        path_.Remove(path_.Length());
    }

    void addChildren(const TDF_Label& definition, std::int32_t index) {
        if (!XCAFDoc_ShapeTool::IsAssembly(definition))
            return;
        TDF_LabelSequence components;
        XCAFDoc_ShapeTool::GetComponents(definition, components);
        for (const TDF_Label& component : components)
            addNode(component, index);
    }

    std::int32_t partOf(const TDF_Label& definition) {
        if (const std::int32_t* known = partOfLabel_.Seek(definition))
            return *known;
        const auto index = static_cast<std::int32_t>(product_.parts.size());
        document::Part& part = product_.parts.emplace_back();
        part.name = nameOf(definition);
        if (part.name.empty())
            part.name = index == 0 ? product_.name : "Part " + std::to_string(index + 1);
        if (XCAFDoc_ShapeTool::IsAssembly(definition))
            part.material = labelMaterial(definition, substanceOf(definition));
        else
            shapesToMesh_.push_back({definition, index});
        partOfLabel_.Bind(definition, index);
        return index;
    }

    // A colour given for this very occurrence from further up goes before the component's own; the
    // highest wins.
    std::int32_t instanceMaterial(const TDF_Label& label, const std::string& substance) {
        for (Standard_Integer first = 1; first < path_.Length(); ++first) {
            TDF_AttributeSequence usages;
            if (!XCAFDoc_ShapeTool::GetAllComponentSHUO(path_.Value(first), usages))
                continue;
            TDF_LabelSequence path;
            for (Standard_Integer i = first; i <= path_.Length(); ++i)
                path.Append(path_.Value(i));
            Handle(XCAFDoc_GraphNode) usage;
            if (!XCAFDoc_ShapeTool::FindSHUO(path, usage))
                continue;
            if (const auto color = colorOf(usage->Label()))
                return materials_.indexOf(color, substance);
        }
        const auto color = colorOf(label);
        return color ? materials_.indexOf(color, substance) : none;
    }

    std::int32_t labelMaterial(const TDF_Label& label, const std::string& substance) {
        return materials_.indexOf(colorOf(label), substance);
    }

    std::optional<Quantity_ColorRGBA> colorOf(const TDF_Label& label) {
        Quantity_ColorRGBA color;
        if (colors_->GetColor(label, XCAFDoc_ColorSurf, color) ||
            colors_->GetColor(label, XCAFDoc_ColorGen, color))
            return color;
        return std::nullopt;
    }

    void meshParts() {
        report_.enter("mesh", meshFrom, meshTo);
        for (std::size_t i = 0; i < shapesToMesh_.size(); ++i) {
            meshPart(shapesToMesh_[i].label, product_.parts[shapesToMesh_[i].part]);
            report_.advance(static_cast<double>(i + 1) / static_cast<double>(shapesToMesh_.size()));
        }
    }

    void meshPart(const TDF_Label& label, document::Part& part) {
        const StyledPart styled = styledFaces(label);
        const std::string substance = substanceOf(label);
        part.material = materials_.indexOf(styled.color, substance);
        if (styled.faces.empty())
            return;
        document::Mesh mesh = tessellate(
            XCAFDoc_ShapeTool::GetShape(label), styled, settings_,
            [&](const auto& color) { return materials_.indexOf(color, substance); }, report_);
        if (mesh.indices.empty())
            return;
        mesh.name = part.name;
        part.mesh = static_cast<std::int32_t>(product_.meshes.size());
        product_.meshes.push_back(std::move(mesh));
    }

    struct ShapeToMesh {
        TDF_Label label;
        std::int32_t part;
    };

    Handle(XCAFDoc_ShapeTool) shapes_;
    Handle(XCAFDoc_ColorTool) colors_;
    const ImportSettings& settings_;
    ImportReport& report_;
    Product& product_;
    SurfaceMaterials materials_;
    NCollection_DataMap<TDF_Label, std::int32_t, TDF_LabelMapHasher> partOfLabel_;
    std::vector<ShapeToMesh> shapesToMesh_;
    TDF_LabelSequence path_;
};

} // namespace

Product productOf(const ShapeDocument& shapes,
                  const ImportSettings& settings,
                  const std::string& fallbackName,
                  ImportReport& report) {
    Product product;
    product.name = fallbackName;
    product.unit = shapes.unit;
    TreeBuilder(shapes, settings, report, product).build();
    if (product.meshes.empty())
        throw ImportError("it holds no surface that can be shown");
    return product;
}

} // namespace qor::import
