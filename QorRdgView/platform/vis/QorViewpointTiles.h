#pragma once

#include "platform/vis/QorI3DMultiViewpointViewer.h"

#include <utility>

class Qor3DViewer;

/// The viewpoints of space that share a viewer: the main one, and up to three others of the same
/// root. A part of the viewer, which it counts and queries for.
class QorViewpointTiles final : public QorI3DMultiViewpointViewer {
public:
    static constexpr int most = 4;

    QorViewpointTiles(Qor3DViewer& iViewer, Qor3DViewpoint* iMain) : viewer(iViewer), main(iMain) {}

    unsigned AddRef() override;
    unsigned Release() override;
    QorResult QueryInterface(const QorInterfaceId& iInterface, void** oInterface) override;
    QorBaseUnknown* GetImplementation() override;

    bool HasSeveralViewpoints() override { return !others.empty(); }

    std::vector<QorVar<QorViewpoint>> GetViewpoints() override {
        return std::as_const(*this).GetViewpoints();
    }

    /// The main one first, then the others from the upper left on.
    [[nodiscard]] std::vector<QorVar<QorViewpoint>> GetViewpoints() const;

    /// Adds or takes away at the end until there are \p iCount (1 to 4) and lays them out. Returns
    /// the index of the first new one.
    std::size_t Split(int iCount, float iWidth, float iHeight);
    /// Gives each its part of a viewer of that size, in whole pixels. One alone is left as it is.
    void LayOut(float iWidth, float iHeight);
    /// The one whose part holds a pixel, the main one when none does.
    [[nodiscard]] Qor3DViewpoint*
    At(const QorMathPoint2D& iPixel, float iWidth, float iHeight) const;

private:
    Qor3DViewer& viewer;
    Qor3DViewpoint* main; ///< the viewer's
    std::vector<Qor3DViewpoint_var> others;
};
