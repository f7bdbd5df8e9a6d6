#include "workbench/desktop/viewer/gl/SceneContent.h"

#include <map>
#include <unordered_map>

namespace qor::desktop {

namespace {

struct GroupKey {
    std::uint64_t mesh;
    std::uint64_t material;

    bool operator==(const GroupKey&) const = default;
};

struct GroupKeyHash {
    std::size_t operator()(const GroupKey& key) const {
        constexpr std::uint64_t golden = 0x9E3779B97F4A7C15U;
        return static_cast<std::size_t>((key.mesh * golden) ^ key.material);
    }
};

class Collector : public QorRepVisitor3D {
public:
    Collector(SceneContent& content, QorColor highlightColor)
        : content_(content), highlightColor_(highlightColor) {}

    void Visit(const Qor3DBagRep& iRep) override {
        if (!iRep.IsShown())
            return;
        const QorMathTransformation outer = matrix_;
        const bool outerHighlight = highlight_;
        matrix_ = outer * iRep.GetMatrix();
        highlight_ = highlight_ || iRep.IsHighlighted();
        for (const Qor3DRep_var& child : iRep.GetChildren())
            child->Accept(*this);
        matrix_ = outer;
        highlight_ = outerHighlight;
    }

    void Visit(const Qor3DMeshRep& iRep) override {
        const QorMesh* mesh = iRep.GetMesh();
        if (!iRep.IsShown() || mesh == nullptr || mesh->CountTriangles() == 0)
            return;
        InstanceGroup& group = groupOf(*mesh, iRep.GetMaterial());
        group.instances.push_back(instanceHere(isHighlighted(iRep)));
        const Qor3DBoundingBox box = mesh->GetBoundingBox().Transformed(matrix_);
        group.box.Add(box);
        content_.box.Add(box);
    }

    void Visit(const Qor3DLineRep& iRep) override {
        const std::vector<QorMathPoint>& points = iRep.GetPoints();
        if (!iRep.IsShown() || points.size() < 2)
            return;
        const QorGraphicAttributeSet& look = iRep.GetAttributes();
        const QorColor color = isHighlighted(iRep) ? highlightColor_ : look.color;
        std::vector<LineVertex>& vertices = linesOf(look).vertices;
        for (std::size_t i = 1; i < points.size(); ++i)
            for (const QorMathPoint& end : {points[i - 1], points[i]}) {
                const QorMathPoint place = matrix_.Apply(end);
                vertices.push_back({toFloats(place - content_.origin), color});
                content_.box.Add(place);
            }
    }

    void Visit(const Qor3DLightSourceRep& /*iRep*/) override {} // the viewer's own light the scene

    void Visit(const QorRsc3DGroundRep& iRep) override {
        if (iRep.IsShown())
            content_.grounds.push_back(&iRep);
    }

private:
    [[nodiscard]] bool isHighlighted(const QorRep& rep) const {
        return highlight_ || rep.IsHighlighted();
    }

    [[nodiscard]] Instance instanceHere(bool highlighted) const {
        const QorMathVector place = matrix_.origin - content_.origin;
        const auto row = [&](double QorMathVector::*along) {
            return Float4{static_cast<float>(matrix_.axes[0].*along),
                          static_cast<float>(matrix_.axes[1].*along),
                          static_cast<float>(matrix_.axes[2].*along),
                          static_cast<float>(place.*along)};
        };
        return {{row(&QorMathVector::x), row(&QorMathVector::y), row(&QorMathVector::z)},
                highlighted ? 1.0F : 0.0F};
    }

    InstanceGroup& groupOf(const QorMesh& mesh, const QorGraphicMaterial* material) {
        const GroupKey key{mesh.GetContentId(), material != nullptr ? material->GetContentId() : 0};
        const auto [found, isNew] = places_.try_emplace(key, content_.groups.size());
        if (isNew)
            content_.groups.push_back({&mesh, material, {}, {}});
        return content_.groups[found->second];
    }

    LineGroup& linesOf(const QorGraphicAttributeSet& look) {
        const auto [found, isNew] =
            lines_.try_emplace({look.thickness, look.dashed}, content_.lines.size());
        if (isNew)
            content_.lines.push_back({look.thickness, look.dashed, {}});
        return content_.lines[found->second];
    }

    SceneContent& content_;
    QorColor highlightColor_;
    QorMathTransformation matrix_;
    bool highlight_ = false;
    std::unordered_map<GroupKey, std::size_t, GroupKeyHash> places_;
    std::map<std::pair<float, bool>, std::size_t> lines_;
};

} // namespace

SceneContent collectScene(const Qor3DBagRep& root, QorColor highlightColor) {
    SceneContent content;
    const Qor3DBoundingBox box = root.GetBoundingBox();
    if (!box.IsEmpty())
        content.origin = box.Center();
    Collector collector(content, highlightColor);
    root.Accept(collector);
    return content;
}

} // namespace qor::desktop
