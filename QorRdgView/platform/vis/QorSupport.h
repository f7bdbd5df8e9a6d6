#pragma once

#include "platform/component/QorBaseUnknown.h"
#include "platform/component/QorCallbackManager.h"

/// Events of the surface that a viewer draws on.
class QorGraphicWindow {
public:
    static const QorEventName GRAPHICWINDOW_RESIZE; ///< it has another size
    static const QorEventName GRAPHICWINDOW_SWAP;   ///< a finished image has appeared on it
};

/// The surface that a viewer draws on, in device pixels.
class QorSupport : public QorBaseUnknown {
    QorDeclareClass(QorSupport)

    QorSupport(float iWidth, float iHeight);

    /// Publisher of the events of QorGraphicWindow.
    [[nodiscard]] QorCallbackManager* GetCallbackManager() { return &callbacks; }

    void GetWidthAndHeight(float& oWidth, float& oHeight) const;
    /// Width divided by height; 1 for an empty surface.
    [[nodiscard]] float GetRatioWH() const;

    /// One millimetre in support units (pixels): about 3.78 on a screen of 96 dots an inch.
    [[nodiscard]] float GetMMInSupportUnit() const { return mmInSupportUnit; }

    void SetMMInSupportUnit(float iUnits) { mmInSupportUnit = iUnits; }

    /// Device pixels a device-independent pixel, 1 unless a host says otherwise.
    [[nodiscard]] float GetPixelRatio() const { return pixelRatio; }

    void SetPixelRatio(float iRatio) { pixelRatio = iRatio; }

    /// A host, a person or the port has given it another size; dispatches GRAPHICWINDOW_RESIZE when
    /// it is one.
    void Resize(float iWidth, float iHeight);
    /// A host has shown a finished image.
    void Swapped();

protected:
    ~QorSupport() override = default;

private:
    QorCallbackManager callbacks;
    float width;
    float height;
    float mmInSupportUnit;
    float pixelRatio = 1.0F;
};
