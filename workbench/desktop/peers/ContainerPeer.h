#pragma once

#include "workbench/desktop/peers/WidgetPeer.h"

namespace qor::desktop {

/// A peer that others lie in. It lays them out from the constraints that their widgets hold, once
/// for many changes and always before anybody sees them.
class ContainerPeer : public WidgetPeer {
public:
    using WidgetPeer::WidgetPeer;

    /// The Qt widget that the children's controls are made in; null when Qt has deleted it.
    [[nodiscard]] QWidget* inside() const { return inside_; }

    /// Lays the children out before they are painted.
    void layOutLater();
    /// Lays out what waits to be, here and in the containers in here.
    void layOutNow();

    [[nodiscard]] bool wantsWidth() const override { return true; }

    [[nodiscard]] bool wantsHeight() const override;

    void addTabStops(std::vector<QWidget*>& stops) const override;

    /// Where the control of a new peer of \p widget is made.
    [[nodiscard]] static QWidget* parentFor(const QorDialog& widget);

protected:
    void setInside(QWidget* inside);
    void draw(QorAspects aspects) override;

    /// Puts the controls of the children where they belong, by default by their constraints.
    virtual void arrangeChildren();

    /// Space around the children in device-independent pixels.
    [[nodiscard]] virtual int margin() const { return 0; }

private:
    class RequestFilter;

    void orderTabs() const;

    QPointer<QWidget> inside_;
    bool waiting_ = false;
};

/// The peers of the widgets in \p father, in the order in which these were made.
[[nodiscard]] std::vector<WidgetPeer*> peersIn(const QorDialog& father);

/// Whether \p widget lies in a small frame of tools, where buttons show icons.
[[nodiscard]] bool isInToolBar(const QorDialog& widget);

} // namespace qor::desktop
