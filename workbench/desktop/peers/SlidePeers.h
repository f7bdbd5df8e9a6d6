#pragma once

#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/dialog/QorDlgSlider.h"
#include "workbench/desktop/peers/Controls.h"
#include "workbench/desktop/peers/WidgetPeer.h"

#include <QScrollBar>
#include <QSlider>

namespace qor::desktop {

/// A slider. Qt's counts whole steps; the exact value stays below. While the mouse holds the handle
/// every step is a drag; its release, a key and the wheel set the value.
class SliderPeer : public PeerOf<QorDlgSlider, HeldControl<QSlider>> {
public:
    explicit SliderPeer(QorDialog& widget);
    [[nodiscard]] bool wantsWidth() const override;
    [[nodiscard]] bool wantsHeight() const override;

protected:
    void draw(QorAspects aspects) override;

private:
    [[nodiscard]] double valueAt(int position) const;
    void moved(int position);
    void released();

    bool slid_ = false; ///< since the handle was taken
};

/// A scroll bar, by the same rules.
class ScrollBarPeer : public PeerOf<QorDlgScrollBar, HeldControl<QScrollBar>> {
public:
    explicit ScrollBarPeer(QorDialog& widget);
    [[nodiscard]] bool wantsWidth() const override;
    [[nodiscard]] bool wantsHeight() const override;

protected:
    void draw(QorAspects aspects) override;

private:
    void moved(int position);
    void released();

    bool slid_ = false;
};

} // namespace qor::desktop
