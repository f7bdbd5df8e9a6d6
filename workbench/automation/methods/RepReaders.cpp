#include "workbench/automation/methods/RepReaders.h"

#include "platform/vis/Qor2DReps.h"
#include "platform/vis/Qor3DReps.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace qor::automation {

Json toJson(const QorMathPoint2D& point) {
    return Json::array({point.x, point.y});
}

Json toJson(const QorMathVector& vector) {
    return Json::array({vector.x, vector.y, vector.z});
}

Json toJson(float number) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    auto value = static_cast<double>(number);
    std::from_chars(text.data(), end, value);
    return value;
}

Json toJson(const float* numbers, int count) {
    Json list = Json::array();
    for (int i = 0; i < count; ++i)
        list.push_back(toJson(numbers[i]));
    return list;
}

namespace {

Json colorOf(const QorRep& rep) {
    constexpr float full = 255.0F;
    const QorColor& color = rep.GetAttributes().color;
    const std::array<float, 3> parts{static_cast<float>(color.red) / full,
                                     static_cast<float>(color.green) / full,
                                     static_cast<float>(color.blue) / full};
    return toJson(parts.data(), 3);
}

template <class Points>
Json pointsOf(const Points& points) {
    Json list = Json::array();
    for (const auto& point : points)
        list.push_back(toJson(point));
    return list;
}

/// What a custom representation draws: a rectangle or text each for itself, quads all together.
Json primitivesOf(const Qor2DCustomRep& rep) {
    Json list = Json::array();
    for (const Qor2DRectangleGP& one : rep.GetRectangles())
        list.push_back({{"kind", "rectangle"},
                        {"position", toJson(one.low)},
                        {"size", toJson(one.high - one.low)}});
    Json corners = Json::array();
    for (const Qor2DQuadStripGP& strip : rep.GetQuads())
        for (const auto& quad : strip.quads)
            for (const QorMathPoint2D& corner : quad)
                corners.push_back(toJson(corner));
    if (!corners.empty())
        list.push_back({{"kind", "quads"}, {"points", corners}});
    for (const Qor2DAnnotationTextGP& one : rep.GetTexts())
        list.push_back({{"kind", "text"},
                        {"position", toJson(one.position)},
                        {"text", one.text.Str()},
                        {"anchor", one.anchor},
                        {"height", one.height}});
    for (Json& one : list)
        one["color"] = colorOf(rep);
    return list;
}

class Reader2D : public QorRepVisitor2D {
public:
    void Visit(const Qor2DBagRep& iRep) override {
        json = {{"kind", iRep.GetKind()},
                {"position", toJson(iRep.GetTranslation())},
                {"reps", readReps(iRep)}};
    }

    void Visit(const Qor2DLineRep& iRep) override {
        json = {{"kind", iRep.GetKind()},
                {"points", pointsOf(iRep.GetPoints())},
                {"color", colorOf(iRep)}};
    }

    void Visit(const Qor2DPointRep& iRep) override {
        json = {{"kind", iRep.GetKind()},
                {"position", toJson(iRep.GetPoint())},
                {"color", colorOf(iRep)}};
    }

    void Visit(const Qor2DImagePixelRep& iRep) override {
        json = {{"kind", iRep.GetKind()},
                {"position", toJson(iRep.GetPosition())},
                {"size", toJson(iRep.GetSize())}};
    }

    void Visit(const Qor2DCustomRep& iRep) override {
        json = primitivesOf(iRep);
        if (json.size() == 1)
            json = Json(json.front());
        else
            json = {{"kind", iRep.GetKind()}, {"color", colorOf(iRep)}, {"reps", json}};
    }

    Json json;
};

class Reader3D : public QorRepVisitor3D {
public:
    void Visit(const Qor3DBagRep& iRep) override {
        json = {{"kind", iRep.GetKind()},
                {"position", toJson(iRep.GetMatrix().origin)},
                {"reps", readReps(iRep)}};
    }

    void Visit(const Qor3DMeshRep& iRep) override {
        json = {{"kind", iRep.GetKind()}};
        if (const QorGraphicMaterial* material = iRep.GetMaterial())
            json["color"] = toJson(material->baseColor, 3);
    }

    void Visit(const Qor3DLineRep& iRep) override {
        json = {{"kind", iRep.GetKind()},
                {"points", pointsOf(iRep.GetPoints())},
                {"color", colorOf(iRep)}};
    }

    void Visit(const Qor3DLightSourceRep& iRep) override {
        json = {{"kind", iRep.GetKind()}, {"position", toJson(iRep.GetPosition())}};
    }

    void Visit(const QorRsc3DGroundRep& iRep) override {
        json = {{"kind", iRep.GetKind()},
                {"position", toJson(iRep.GetOrigin())},
                {"size", Json::array({iRep.GetSize(), iRep.GetSize()})}};
    }

    Json json;
};

template <class Reader, class Bag>
Json readChildren(const Bag& root) {
    Json list = Json::array();
    for (const auto& child : root.GetChildren()) {
        if (!child->IsShown())
            continue;
        Reader reader;
        child->Accept(reader);
        list.push_back(reader.json.is_null() ? Json{{"kind", child->GetKind()}}
                                             : std::move(reader.json));
    }
    return list;
}

} // namespace

Json readReps(const Qor2DBagRep& root) {
    return readChildren<Reader2D>(root);
}

Json readReps(const Qor3DBagRep& root) {
    return readChildren<Reader3D>(root);
}

} // namespace qor::automation
