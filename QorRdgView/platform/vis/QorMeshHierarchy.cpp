#include "platform/vis/QorMeshHierarchy.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr std::uint32_t leafSize = 8;
constexpr int binCount = 16;
constexpr int deepest = 60; // further splits make a leaf, whatever its size
constexpr float infinite = std::numeric_limits<float>::infinity();

template <class Box>
Box EmptyBox() {
    return {{infinite, infinite, infinite}, {-infinite, -infinite, -infinite}};
}

/// Half the surface of a box, the chance that a ray meets it.
template <class Box>
float HalfArea(const Box& iBox) {
    const float dx = iBox.high[0] - iBox.low[0];
    const float dy = iBox.high[1] - iBox.low[1];
    const float dz = iBox.high[2] - iBox.low[2];
    return dx < 0.0F ? 0.0F : dx * dy + dy * dz + dz * dx;
}

double Component(const QorMathVector& iVector, std::size_t iAxis) {
    return iAxis == 0 ? iVector.x : iAxis == 1 ? iVector.y : iVector.z;
}

/// Distance at which a ray enters a box, infinite when it misses it or enters beyond \p iFarthest.
template <class Box>
double Enter(const Box& iBox, const QorMathRay& iRay, double iFarthest) {
    double near = 0.0;
    double far = iFarthest;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double origin = Component(iRay.origin, axis);
        const double inverse = 1.0 / Component(iRay.direction, axis);
        double first = (static_cast<double>(iBox.low[axis]) - origin) * inverse;
        double second = (static_cast<double>(iBox.high[axis]) - origin) * inverse;
        if (std::isnan(first) || std::isnan(second))
            continue; // the ray runs in the very plane of a side
        if (first > second)
            std::swap(first, second);
        near = std::max(near, first);
        far = std::min(far, second);
    }
    return near <= far ? near : static_cast<double>(infinite);
}

QorMathPoint Corner(const QorMesh::Data& iData, std::uint32_t iTriangle, std::uint32_t iCorner) {
    const std::size_t at =
        3 * static_cast<std::size_t>(iData.indices[3 * std::size_t(iTriangle) + iCorner]);
    return {iData.positions[at], iData.positions[at + 1], iData.positions[at + 2]};
}

double
IntersectTriangle(const QorMesh::Data& iData, std::uint32_t iTriangle, const QorMathRay& iRay) {
    const QorMathPoint corner = Corner(iData, iTriangle, 0);
    const QorMathVector edge1 = Corner(iData, iTriangle, 1) - corner;
    const QorMathVector edge2 = Corner(iData, iTriangle, 2) - corner;
    const QorMathVector p = iRay.direction ^ edge2;
    const double determinant = edge1 * p;
    if (determinant == 0.0)
        return -1.0;
    const QorMathVector t = iRay.origin - corner;
    const double u = (t * p) / determinant;
    const QorMathVector q = t ^ edge1;
    const double v = (iRay.direction * q) / determinant;
    if (!(u >= 0.0) || !(v >= 0.0) || !(u + v <= 1.0))
        return -1.0;
    return (edge2 * q) / determinant;
}

} // namespace

QorMeshHierarchy::QorMeshHierarchy(const QorMesh::Data& iData, const std::atomic<bool>* iStop)
    : data(iData), stop(iStop) {
    const auto count = static_cast<std::uint32_t>(data.indices.size() / 3);
    items.reserve(count);
    for (std::uint32_t triangle = 0; triangle < count; ++triangle) {
        const Box box = BoxOf(triangle);
        Item item{box, {}, triangle};
        for (std::size_t axis = 0; axis < 3; ++axis)
            item.center[axis] = 0.5F * (box.low[axis] + box.high[axis]);
        items.push_back(item);
    }
    nodes.push_back({EmptyBox<Box>(), 0, 0});
    if (count > 0)
        Build(0, 0, count, 0);
    nodes.shrink_to_fit();
    triangles.reserve(count);
    for (const Item& item : items)
        triangles.push_back(item.triangle);
    items = {};
}

void QorMeshHierarchy::Grow(Box& ioBox, const Box& iOther) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        ioBox.low[axis] = std::min(ioBox.low[axis], iOther.low[axis]);
        ioBox.high[axis] = std::max(ioBox.high[axis], iOther.high[axis]);
    }
}

QorMeshHierarchy::Box QorMeshHierarchy::BoxOf(std::uint32_t iTriangle) const {
    Box box = EmptyBox<Box>();
    for (std::uint32_t corner = 0; corner < 3; ++corner) {
        const std::size_t at =
            3 * static_cast<std::size_t>(data.indices[3 * std::size_t(iTriangle) + corner]);
        const std::array<float, 3> point{data.positions[at], data.positions[at + 1],
                                         data.positions[at + 2]};
        Grow(box, {point, point});
    }
    return box;
}

void QorMeshHierarchy::Build(std::uint32_t iNode,
                             std::uint32_t iBegin,
                             std::uint32_t iEnd,
                             int iDepth) {
    Box box = EmptyBox<Box>();
    for (std::uint32_t i = iBegin; i < iEnd; ++i)
        Grow(box, items[i].box);
    nodes[iNode].box = box;
    const std::uint32_t middle =
        iEnd - iBegin > leafSize && iDepth < deepest && !(stop != nullptr && *stop)
            ? Split(box, iBegin, iEnd)
            : iEnd;
    if (middle == iEnd) {
        nodes[iNode].first = iBegin;
        nodes[iNode].count = iEnd - iBegin;
        return;
    }
    const auto children = static_cast<std::uint32_t>(nodes.size());
    nodes[iNode].first = children;
    nodes[iNode].count = 0;
    nodes.push_back({});
    nodes.push_back({});
    Build(children, iBegin, middle, iDepth + 1);
    Build(children + 1, middle, iEnd, iDepth + 1);
}

std::uint32_t QorMeshHierarchy::Split(const Box& iBox, std::uint32_t iBegin, std::uint32_t iEnd) {
    Box centers = EmptyBox<Box>();
    for (std::uint32_t i = iBegin; i < iEnd; ++i)
        Grow(centers, {items[i].center, items[i].center});
    std::size_t axis = 0;
    for (std::size_t other = 1; other < 3; ++other)
        if (centers.high[other] - centers.low[other] > centers.high[axis] - centers.low[axis])
            axis = other;
    const float extent = centers.high[axis] - centers.low[axis];
    if (!(extent > 0.0F))
        return iEnd;
    const float scale = static_cast<float>(binCount) * 0.9999F / extent;
    const auto binOf = [&](const Item& iItem) {
        return static_cast<std::size_t>((iItem.center[axis] - centers.low[axis]) * scale);
    };

    struct Bin {
        Box box = EmptyBox<Box>();
        std::uint32_t count = 0;
    };

    std::array<Bin, binCount> bins;
    for (std::uint32_t i = iBegin; i < iEnd; ++i) {
        Bin& bin = bins[binOf(items[i])];
        Grow(bin.box, items[i].box);
        ++bin.count;
    }
    std::array<float, binCount> costAbove{};
    Bin sweep;
    for (std::size_t i = binCount; i-- > 1;) {
        Grow(sweep.box, bins[i].box);
        sweep.count += bins[i].count;
        costAbove[i] = HalfArea(sweep.box) * static_cast<float>(sweep.count);
    }
    sweep = {};
    float best = HalfArea(iBox) * static_cast<float>(iEnd - iBegin); // the cost of a leaf
    std::size_t bestBin = 0;
    for (std::size_t i = 1; i < binCount; ++i) {
        Grow(sweep.box, bins[i - 1].box);
        sweep.count += bins[i - 1].count;
        const float cost = HalfArea(sweep.box) * static_cast<float>(sweep.count) + costAbove[i];
        if (cost < best) {
            best = cost;
            bestBin = i;
        }
    }
    if (bestBin == 0)
        return iEnd;
    const auto middle = std::partition(items.begin() + iBegin, items.begin() + iEnd,
                                       [&](const Item& iItem) { return binOf(iItem) < bestBin; });
    return static_cast<std::uint32_t>(middle - items.begin());
}

double QorMeshHierarchy::Intersect(const QorMathRay& iRay, double iFarthest) const {
    double nearest = -1.0;
    double farthest = iFarthest;
    std::array<std::uint32_t, 2 * deepest + 2> stack{};
    std::size_t depth = 0;
    stack[depth++] = 0;
    while (depth > 0) {
        const Node& node = nodes[stack[--depth]];
        if (!std::isfinite(Enter(node.box, iRay, farthest)))
            continue;
        if (node.count == 0 && !triangles.empty()) {
            const bool firstIsNearer = Enter(nodes[node.first].box, iRay, farthest) <=
                                       Enter(nodes[node.first + 1].box, iRay, farthest);
            stack[depth++] = firstIsNearer ? node.first + 1 : node.first;
            stack[depth++] = firstIsNearer ? node.first : node.first + 1;
            continue;
        }
        for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
            const double distance = IntersectTriangle(data, triangles[i], iRay);
            if (distance >= 0.0 && distance < farthest)
                nearest = farthest = distance;
        }
    }
    return nearest;
}

double QorMeshHierarchy::IntersectAll(const QorMesh::Data& iData,
                                      const QorMathRay& iRay,
                                      double iFarthest) {
    double nearest = -1.0;
    const auto count = static_cast<std::uint32_t>(iData.indices.size() / 3);
    for (std::uint32_t triangle = 0; triangle < count; ++triangle) {
        const double distance = IntersectTriangle(iData, triangle, iRay);
        if (distance >= 0.0 && distance < (nearest < 0.0 ? iFarthest : nearest))
            nearest = distance;
    }
    return nearest;
}
