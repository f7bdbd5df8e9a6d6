#pragma once

#include "platform/dialog/QorDialog.h"
#include "platform/dialog/QorPeer.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

namespace qor::desktop {

class ContainerPeer;

/// What all peers share: the Qt widget, its help texts, sensitivity and visibility, and the way up.
/// A peer is destroyed with its widget, also from inside an up-call; its Qt widget is then hidden
/// at once and deleted by Qt when no event is on its way through it any more. Qt may delete it
/// earlier, with its parent.
class WidgetPeer : public QorPeer {
public:
    explicit WidgetPeer(QorDialog& widget);
    ~WidgetPeer() override;

    void Update(QorAspects iAspects) final;
    void TakeFocus() override;

    /// Null when Qt has deleted it.
    [[nodiscard]] QWidget* control() const { return control_; }

    [[nodiscard]] QorDialog& widget() const { return widget_; }

    /// The peer that this one lies in; null for windows.
    [[nodiscard]] ContainerPeer* container() const;

    /// Whether the control takes all the width that it can get.
    [[nodiscard]] virtual bool wantsWidth() const { return false; }

    /// Whether it takes all the height that it can get.
    [[nodiscard]] virtual bool wantsHeight() const { return false; }

    /// What the Tab key reaches in it, in order.
    virtual void addTabStops(std::vector<QWidget*>& stops) const;

    /// Called when the widgets around it have been laid out anew.
    virtual void neighboursChanged();

    /// The peer of \p widget in this toolkit, or null.
    [[nodiscard]] static WidgetPeer* of(const QorDialog* widget);

protected:
    /// Takes the control over. Called once, by the constructor of the derived class.
    void setControl(QWidget* control);

    /// Draws the aspects that the kind of widget adds to the common ones.
    virtual void draw(QorAspects aspects) = 0;

    virtual void drawVisibility();

    /// Tells the widget what a person did, then draws \p aspects again, because the widget may have
    /// refused. Whether this peer is still there: if not, it must not be touched.
    bool report(const std::function<QorUserResult()>& up, QorAspects aspects);

    /// What connections are bound to, so that they end with the peer.
    [[nodiscard]] QObject* context() const { return context_.get(); }

    /// \p function for as long as the peer lives, then nothing; for hooks of controls.
    template <class Function>
    [[nodiscard]] auto whileAlive(Function function) const {
        return [alive = QPointer<QObject>(context()), function](auto... arguments) {
            if (alive)
                function(arguments...);
        };
    }

private:
    void drawHelp();

    QorDialog& widget_;
    QPointer<QWidget> control_;
    std::unique_ptr<QObject> context_;
};

/// A peer whose widget is a \p Widget and whose control is a \p Control.
template <class Widget, class Control>
class PeerOf : public WidgetPeer {
protected:
    PeerOf(QorDialog& widget, Control* control) : WidgetPeer(widget) { setControl(control); }

    /// The widget in its own class.
    [[nodiscard]] Widget& my() const { return static_cast<Widget&>(widget()); }

    /// The control in its own class; only called while it is there.
    [[nodiscard]] Control& box() const { return *static_cast<Control*>(control()); }
};

} // namespace qor::desktop
