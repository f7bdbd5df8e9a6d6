#pragma once

#include "platform/dialog/QorDlgColorEditor.h"
#include "platform/dialog/QorDlgNotify.h"
#include "workbench/desktop/peers/WidgetPeer.h"
#include "workbench/desktop/peers/WindowControl.h"

#include <QColorDialog>
#include <QMessageBox>

namespace qor::desktop {

/// A notification box, in front of everything until it is answered. It is shown without a loop of
/// Qt's: the library waits for the answer.
class NotifyPeer : public PeerOf<QorDlgNotify, WindowControl<QMessageBox>> {
public:
    explicit NotifyPeer(QorDialog& widget);
    void Raise() override;

protected:
    void draw(QorAspects aspects) override;
    void drawVisibility() override;

private:
    void pressed(QMessageBox::StandardButton button);
};

/// A colour editor, which stays open until it is destroyed.
class ColorPeer : public PeerOf<QorDlgColorEditor, WindowControl<QColorDialog>> {
public:
    explicit ColorPeer(QorDialog& widget);
    void Raise() override;

protected:
    void draw(QorAspects aspects) override;
    void drawVisibility() override;
};

} // namespace qor::desktop
