#pragma once

#include "platform/dialog/QorDlgButton.h"
#include "workbench/desktop/peers/Controls.h"
#include "workbench/desktop/peers/WidgetPeer.h"

#include <QAbstractButton>

namespace qor::desktop {

/// A push button; in a tool bar one with its icon alone.
class PushPeer : public PeerOf<QorDlgPushButton, QAbstractButton> {
public:
    explicit PushPeer(QorDialog& widget);

protected:
    void draw(QorAspects aspects) override;
};

/// A check box; in a tool bar a button with its icon that stays down.
class CheckPeer : public PeerOf<QorDlgCheckButton, QAbstractButton> {
public:
    explicit CheckPeer(QorDialog& widget);

protected:
    void draw(QorAspects aspects) override;

private:
    class DoubleClickFilter;

    void clicked();

    bool secondClick_ = false; ///< the mouse is between the second press and release of two
};

/// A radio button. Which of them are checked is decided by the widgets. Tab reaches the checked one
/// of the group, arrows go to its neighbours and check them.
class RadioPeer : public PeerOf<QorDlgRadioButton, RadioControl> {
public:
    explicit RadioPeer(QorDialog& widget);
    void addTabStops(std::vector<QWidget*>& stops) const override;

protected:
    void draw(QorAspects aspects) override;

private:
    [[nodiscard]] std::vector<RadioPeer*> group() const;
    void goTo(int direction);
    void drawTabStops() const;
};

} // namespace qor::desktop
