// The outline of what is rendered, against where the viewpoint has its corners.
#include "tests/engine/adapter/EngineTest.h"
#include "workbench/engine/adapter/ViewPicture.h"

#include <algorithm>
#include <cmath>

namespace {

using Polygon = std::vector<QorMathPoint2D>;

/// Positive on the left of the way from \p a to \p b.
double sideOf(const QorMathPoint2D& a, const QorMathPoint2D& b, const QorMathPoint2D& p) {
    return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
}

/// The convex hull, by Andrew's monotone chain.
Polygon hullOf(Polygon points) {
    std::sort(points.begin(), points.end(),
              [](const auto& a, const auto& b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
    Polygon hull;
    for (int turn = 0; turn < 2; ++turn) {
        const std::size_t first = hull.size();
        for (const QorMathPoint2D& point : points) {
            while (hull.size() >= first + 2 &&
                   sideOf(hull[hull.size() - 2], hull.back(), point) <= 0)
                hull.pop_back();
            hull.push_back(point);
        }
        hull.pop_back();
        std::reverse(points.begin(), points.end());
    }
    return hull;
}

/// How far inside a convex polygon a point lies; negative outside, where it is at most that far.
double depthIn(const Polygon& hull, const QorMathPoint2D& point) {
    double depth = 1e9;
    for (std::size_t i = 0; i < hull.size(); ++i) {
        const QorMathPoint2D& a = hull[i];
        const QorMathPoint2D& b = hull[(i + 1) % hull.size()];
        depth = std::min(depth, sideOf(a, b, point) / std::hypot(b.x - a.x, b.y - a.y));
    }
    return depth;
}

class OutlineTest : public EngineTest {
protected:
    static constexpr int width = 161;
    static constexpr int height = 97;

    /// The cube's, in pixels from the top left.
    Polygon ProjectedHull() {
        Polygon corners;
        for (const double x : {-10.0, 10.0})
            for (const double y : {-10.0, 10.0})
                for (const double z : {-10.0, 10.0})
                    EXPECT_TRUE(viewer->GetMain3DViewpoint()->Project({x, y, z}, width, height,
                                                                      corners.emplace_back()));
        return hullOf(corners);
    }

    /// Every pixel farther than one from the hull is wholly what it should be.
    void ExpectOutline(const std::string& iName, const std::function<bool(int, int)>& iIsProduct) {
        const Polygon hull = ProjectedHull();
        int inside = 0;
        int wrong = 0;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const double depth = depthIn(hull, {x + 0.5, y + 0.5});
                inside += depth > 1.0 ? 1 : 0;
                wrong += std::abs(depth) > 1.0 && iIsProduct(x, y) != (depth > 0.0) ? 1 : 0;
            }
        EXPECT_GT(inside, 300) << iName;
        EXPECT_EQ(wrong, 0) << iName;
    }
};

TEST_F(OutlineTest, OfRendersAndOfTheViewerAreWhereTheViewpointHasThem) {
    viewer->SetLightSourceReps(nullptr, nullptr);
    viewer->SetGlobalAmbientLight(0, 0, 0); // a black product on a background that is not
    Qor3DViewpoint& viewpoint = *viewer->GetMain3DViewpoint();
    for (const auto projection :
         {Qor3DViewpoint::Projection::Perspective, Qor3DViewpoint::Projection::Parallel})
        for (const double angle : {20.0, 70.0})
            for (const QorMathPoint& eye :
                 {QorMathPoint{40, -60, 45}, QorMathPoint{-3, 50, 4}, QorMathPoint{20, 20, -60}}) {
                viewpoint.SetProjection(projection);
                viewpoint.SetFieldOfView(angle);
                viewpoint.SetView(eye, {1, 2, -1}, {0.1, 0.2, 1});
                const std::string name = std::to_string(static_cast<int>(projection)) + " " +
                                         std::to_string(angle) + " " + std::to_string(eye.x);
                const QorPixelImage_var rendered = Render(width, height);
                ASSERT_TRUE(rendered);
                ExpectOutline("rendered " + name,
                              [&](int x, int y) { return PixelOf(rendered, x, y)[2] == 0; });
                QorUnicodeString error;
                const QorPixelImage_var shown = qor::adapter::takeViewPicture(
                    *engine->cache(), *viewer, viewpoint, width, height, error, {});
                ASSERT_TRUE(shown) << error.Str();
                ExpectOutline("shown " + name,
                              [&](int x, int y) { return PixelOf(shown, x, y)[3] > 0; });
            }
}

} // namespace
