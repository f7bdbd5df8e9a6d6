#pragma once

#include "platform/dialog/QorDlgDialog.h"
#include "platform/dialog/QorDlgFrame.h"
#include "workbench/desktop/peers/ContainerPeer.h"
#include "workbench/desktop/peers/WindowControl.h"

#include <QDialogButtonBox>
#include <QSize>

class QSpacerItem;

namespace qor::desktop {

/// A dialog with its buttons by style.
class DialogPeer : public ContainerPeer {
public:
    explicit DialogPeer(QorDialog& widget);
    ~DialogPeer() override;
    void Raise() override;
    void addTabStops(std::vector<QWidget*>& stops) const override;

protected:
    void draw(QorAspects aspects) override;
    void drawVisibility() override;
    [[nodiscard]] int margin() const override;

private:
    class SizeFilter;
    using Window = WindowControl<QDialog>;

    [[nodiscard]] QorDlgDialog& my() const { return static_cast<QorDlgDialog&>(widget()); }

    void build(Window& window);
    void addButtons(Window& window, QLayout& layout);
    void connectHooks(Window& window);
    void sizeChanged();
    void grow();
    void drawTitle(const QString& title);
    void place() const;
    void placeBesideTools(const QWidget& tools) const;
    void focusFirst() const;
    void giveKeyboardBack() const;

    QDialogButtonBox* buttons_ = nullptr; ///< belongs to the window
    QSpacerItem* titleRoom_ = nullptr;    ///< belongs to the window's layout
    bool sizeWaits_ = false;
    QSize given_; ///< the window's size by this peer, until a person chooses another
};

/// A frame with title and border, or plain.
class FramePeer : public ContainerPeer {
public:
    explicit FramePeer(QorDialog& widget);

protected:
    void draw(QorAspects aspects) override;
    [[nodiscard]] int margin() const override;

private:
    [[nodiscard]] bool isBordered() const;
};

} // namespace qor::desktop
