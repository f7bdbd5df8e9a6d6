#include "platform/vis/QorView.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

constexpr double quarterTurn = 0.5 * std::numbers::pi;

QorMathVector MeanUp(const QorMathTransformation& iFrame, const QorMathVector& iVertical) {
    // While the picture stands upright, the vertical says the same as the screen's up and says it
    // for good; seen along the vertical only the screen's up does.
    constexpr double level = 1.0e-9;
    constexpr double steepest = 1.0e-3;
    const bool upright =
        std::abs(iFrame.axes[0] * iVertical) < level && iFrame.axes[1] * iVertical > steepest;
    return upright ? iVertical : iFrame.axes[1];
}

/// Axis (of length 1) and angle of a rotation.
struct Turn {
    QorMathVector axis{0.0, 0.0, 1.0};
    double angle = 0.0;
};

Turn TurnOf(const QorMathTransformation& iRotation) {
    const auto& [x, y, z] = iRotation.axes;
    const QorMathVector twiceSine{y.z - z.y, z.x - x.z, x.y - y.x};
    const double cosine = 0.5 * (x.x + y.y + z.z - 1.0);
    const double sine = 0.5 * twiceSine.Norm();
    constexpr double tiny = 1.0e-9;
    if (sine > tiny)
        return {twiceSine.Normalized(), std::atan2(sine, cosine)};
    if (cosine > 0.0)
        return {};
    // Half a turn: the matrix is 2 a aT - 1, so any column of it plus 1 lies along the axis.
    const std::array<QorMathVector, 3> along{
        {x + QorMathVector{1, 0, 0}, y + QorMathVector{0, 1, 0}, z + QorMathVector{0, 0, 1}}};
    const auto longest =
        std::max_element(along.begin(), along.end(),
                         [](const auto& iA, const auto& iB) { return iA.Norm() < iB.Norm(); });
    return {longest->Normalized(), std::numbers::pi};
}

double Mixed(double iFrom, double iTo, double iPart) {
    return iFrom + (iTo - iFrom) * iPart;
}

} // namespace

QorView QorView::Of(const Qor3DViewpoint& iViewpoint) {
    return {iViewpoint.GetEye(), iViewpoint.GetTarget(), iViewpoint.GetUp(),
            iViewpoint.GetFieldOfView(), iViewpoint.GetProjection()};
}

void QorView::ApplyTo(Qor3DViewpoint& ioViewpoint) const {
    ioViewpoint.SetView(eye, target, up);
    ioViewpoint.SetFieldOfView(fieldOfView);
    ioViewpoint.SetProjection(projection);
}

QorMathTransformation QorView::Frame() const {
    const QorMathVector back = (eye - target).Normalized();
    const QorMathVector right = (up ^ back).Normalized();
    return {{{right, back ^ right, back}}, eye};
}

QorView QorView::Orbited(const QorMathPoint& iPivot,
                         const QorMathVector& iVertical,
                         double iTurn,
                         double iTilt) const {
    const QorMathTransformation frame = Frame();
    const double elevation = std::asin(std::clamp(frame.axes[2] * iVertical, -1.0, 1.0));
    const double tilt = std::clamp(elevation + iTilt, -quarterTurn, quarterTurn) - elevation;
    // Tilting upwards turns about the screen's right the other way round.
    const QorMathTransformation turn = QorMathTransformation::Rotation(iVertical, iTurn) *
                                       QorMathTransformation::Rotation(frame.axes[0], -tilt);
    QorView view = *this;
    view.eye = iPivot + turn.ApplyToVector(eye - iPivot);
    view.target = iPivot + turn.ApplyToVector(target - iPivot);
    view.up = turn.ApplyToVector(frame.axes[1]);
    view.up = MeanUp(view.Frame(), iVertical);
    return view;
}

QorView QorView::Moved(const QorMathVector& iShift) const {
    QorView view = *this;
    view.eye = eye + iShift;
    view.target = target + iShift;
    return view;
}

QorView QorView::Zoomed(const QorMathPoint& iPoint, double iFactor) const {
    constexpr double nearest = 1.0e-3;
    constexpr double farthest = 1.0e9;
    const double factor = std::clamp(Distance() * iFactor, nearest, farthest) / Distance();
    QorView view = *this;
    view.eye = iPoint + (eye - iPoint) * factor;
    view.target = iPoint + (target - iPoint) * factor;
    return view;
}

QorView QorView::Fitted(const Qor3DBoundingBox& iBox, double iRatio) const {
    if (iBox.IsEmpty())
        return *this;
    constexpr double margin = 1.05;
    const QorMathTransformation frame = Frame();
    const double upwards = std::tan(fieldOfView * std::numbers::pi / 360.0) / margin;
    const double across = upwards * iRatio;
    const bool parallel = projection == Qor3DViewpoint::Projection::Parallel;
    const QorMathPoint center = iBox.Center();
    double distance = 0.0;
    for (const double x : {iBox.low.x, iBox.high.x})
        for (const double y : {iBox.low.y, iBox.high.y})
            for (const double z : {iBox.low.z, iBox.high.z}) {
                const QorMathVector offset = QorMathPoint{x, y, z} - center;
                const double needed = std::max(std::abs(offset * frame.axes[0]) / across,
                                               std::abs(offset * frame.axes[1]) / upwards);
                const double depth = offset * frame.axes[2];
                // Seen in parallel, depth does not shrink; the eye only has to be in front.
                distance = std::max(distance,
                                    parallel ? std::max(needed, margin * depth) : needed + depth);
            }
    QorView view = *this;
    view.target = center;
    view.eye = center + frame.axes[2] * (distance > 0.0 ? distance : Distance());
    return view;
}

QorView QorView::Seen(const QorMathVector& iSight, const QorMathVector& iUp) const {
    QorView view = *this;
    view.eye = target - iSight.Normalized() * Distance();
    view.up = iUp;
    return view;
}

QorView QorView::Towards(const QorView& iOther, double iPart) const {
    const QorMathTransformation from{Frame().axes, {}};
    const QorMathTransformation to{iOther.Frame().axes, {}};
    const Turn turn = TurnOf(to * from.Inverse());
    const QorMathTransformation frame =
        QorMathTransformation::Rotation(turn.axis, turn.angle * iPart) * from;
    const double distance = Distance() * std::pow(iOther.Distance() / Distance(), iPart);
    QorView view = iOther;
    view.target = target + (iOther.target - target) * iPart;
    view.eye = view.target + frame.axes[2] * distance;
    view.up = frame.axes[1];
    view.fieldOfView = Mixed(fieldOfView, iOther.fieldOfView, iPart);
    return view;
}

QorView QorSeenFrom(QorStandardView iView, const QorMathVector& iVertical, const QorView& iFrom) {
    struct Row {
        QorStandardView view;
        QorMathVector sight;
        QorMathVector up;
    };

    static constexpr std::array<Row, 7> rows{{
        {QorStandardView::Front, {0, 1, 0}, {0, 0, 1}},
        {QorStandardView::Back, {0, -1, 0}, {0, 0, 1}},
        {QorStandardView::Left, {1, 0, 0}, {0, 0, 1}},
        {QorStandardView::Right, {-1, 0, 0}, {0, 0, 1}},
        {QorStandardView::Top, {0, 0, -1}, {0, 1, 0}},
        {QorStandardView::Bottom, {0, 0, 1}, {0, -1, 0}},
        {QorStandardView::Isometric, {-1, 1, -1}, {0, 0, 1}},
    }};
    const auto* row =
        std::find_if(rows.begin(), rows.end(), [&](const Row& iRow) { return iRow.view == iView; });
    const QorMathTransformation turn = QorMathTransformation::FromZTo(iVertical);
    return iFrom.Seen(turn.ApplyToVector(row->sight), turn.ApplyToVector(row->up));
}
