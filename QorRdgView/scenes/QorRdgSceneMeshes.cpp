#include "scenes/QorRdgSceneMeshes.h"

#include <cmath>
#include <numbers>

namespace {

/// Collects vertices and triangles.
class Builder {
public:
    std::uint32_t Add(const QorMathPoint& iPoint, const QorMathVector& iNormal) {
        for (const double value : {iPoint.x, iPoint.y, iPoint.z})
            data.positions.push_back(static_cast<float>(value));
        for (const double value : {iNormal.x, iNormal.y, iNormal.z})
            data.normals.push_back(static_cast<float>(value));
        return static_cast<std::uint32_t>(data.positions.size() / 3 - 1);
    }

    void Triangle(std::uint32_t iA, std::uint32_t iB, std::uint32_t iC) {
        data.indices.insert(data.indices.end(), {iA, iB, iC});
    }

    /// The strip between two rows of equally many vertices.
    void Strip(std::uint32_t iLower, std::uint32_t iUpper, int iCount) {
        for (std::uint32_t i = 0; i + 1 < static_cast<std::uint32_t>(iCount); ++i) {
            Triangle(iLower + i, iLower + i + 1, iUpper + i + 1);
            Triangle(iLower + i, iUpper + i + 1, iUpper + i);
        }
    }

    [[nodiscard]] QorMesh_var Make() { return QorMake<QorMesh>(std::move(data)); }

private:
    QorMesh::Data data;
};

QorMathVector Around(int i, int iCount) {
    const double angle = 2.0 * std::numbers::pi * i / iCount;
    return {std::cos(angle), std::sin(angle), 0.0};
}

/// A row of iCount + 1 vertices round the axis, the last where the first is.
std::uint32_t
AddRing(Builder& ioBuilder, double iZ, double iRadius, int iCount, double iOut, double iUp) {
    std::uint32_t first = 0;
    for (int i = 0; i <= iCount; ++i) {
        const QorMathVector out = Around(i, iCount);
        const QorMathVector normal = (out * iOut + QorMathVector{0.0, 0.0, iUp}).Normalized();
        const std::uint32_t vertex =
            ioBuilder.Add(out * iRadius + QorMathVector{0.0, 0.0, iZ}, normal);
        if (i == 0)
            first = vertex;
    }
    return first;
}

/// A disc across the axis that faces up (1) or down (-1).
void AddEnd(Builder& ioBuilder, double iZ, double iRadius, int iCount, double iUp) {
    if (iRadius <= 0.0)
        return;
    const std::uint32_t middle = ioBuilder.Add({0.0, 0.0, iZ}, {0.0, 0.0, iUp});
    const std::uint32_t ring = AddRing(ioBuilder, iZ, iRadius, iCount, 0.0, iUp);
    for (std::uint32_t i = 0; i < static_cast<std::uint32_t>(iCount); ++i) {
        if (iUp > 0.0)
            ioBuilder.Triangle(middle, ring + i, ring + i + 1);
        else
            ioBuilder.Triangle(middle, ring + i + 1, ring + i);
    }
}

} // namespace

QorMesh_var QorRdgSceneMeshes::MakeSphere(double iRadius, int iSubdivisions) {
    Builder builder;
    const int rows = iSubdivisions / 2;
    std::uint32_t lower = 0;
    for (int row = 0; row <= rows; ++row) {
        const double angle = std::numbers::pi * (static_cast<double>(row) / rows - 0.5);
        const double out = std::cos(angle);
        const double up = std::sin(angle);
        const std::uint32_t ring =
            AddRing(builder, iRadius * up, iRadius * out, iSubdivisions, out, up);
        if (row > 0)
            builder.Strip(lower, ring, iSubdivisions + 1);
        lower = ring;
    }
    return builder.Make();
}

QorMesh_var QorRdgSceneMeshes::MakeCone(
    double iBottom, double iTop, double iBottomRadius, double iTopRadius, int iFacets) {
    Builder builder;
    const double out = iTop - iBottom;
    const double up = iBottomRadius - iTopRadius;
    const std::uint32_t lower = AddRing(builder, iBottom, iBottomRadius, iFacets, out, up);
    const std::uint32_t upper = AddRing(builder, iTop, iTopRadius, iFacets, out, up);
    builder.Strip(lower, upper, iFacets + 1);
    AddEnd(builder, iBottom, iBottomRadius, iFacets, -1.0);
    AddEnd(builder, iTop, iTopRadius, iFacets, 1.0);
    return builder.Make();
}
