#pragma once

#include "platform/engine/QorIRdgViewerParts.h"
#include "quickrender/QorRdgViewerAdapter.h"

/// Slides the ground up and down along its vertical, whatever way the mouse goes.
class QorRdgGroundManipulator : public Qor3DManipulator {
    QorDeclareClass(QorRdgGroundManipulator)

    QorRdgGroundManipulator(QorCommand* iFather,
                            const QorString& iName,
                            QorViewer* iViewer,
                            QorRsc3DGroundRep* iGround);

protected:
    ~QorRdgGroundManipulator() override = default;
    void BeginDrag(const QorMouseEvent& iMouse, const std::vector<QorVar<QorRep>>& iPath) override;
    void Drag(const QorMouseEvent& iMouse) override;

private:
    /// The point of the eye ray through the mouse in the plane through \p iPoint across \p iNormal.
    [[nodiscard]] QorMathPoint PointUnder(const QorMouseEvent& iMouse,
                                          const QorMathPoint& iPoint,
                                          const QorMathVector& iNormal) const;

    QorRsc3DGroundRep_var ground;
    Qor3DViewpoint_var held; ///< in which the drag began
    QorMathPoint picked;
};

/// Puts the ground of quick renders under the product that a 3D viewer shows.
class QorRdgGroundViewer : public QorImplements<QorRdgViewerAdapter, QorIRdgGround> {
    QorDeclareClass(QorRdgGroundViewer)

    explicit QorRdgGroundViewer(QorBaseUnknown* iOwner);

    QorResult SetGroundOn(int iOn) override;
    QorResult SetGroundVisible(bool iVisible) override;
    QorResult SetTransparency(float iValue) override;
    QorResult SetReflectivity(float iValue) override;

protected:
    ~QorRdgGroundViewer() override;
    void DoInit(Qor3DViewer& iViewer) override;
    void DoCleanUp(Qor3DViewer& iViewer) override;

private:
    void AddGround(Qor3DViewer& ioViewer);
    void RemoveGround(Qor3DViewer& ioViewer);

    QorRsc3DGroundRep_var ground;
    QorVar<QorRdgGroundManipulator> manipulator;
};

QorDeclareBOA(QorIRdgGround, QorRdgGroundViewer);
