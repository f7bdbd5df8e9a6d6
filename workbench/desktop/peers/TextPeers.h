#pragma once

#include "platform/dialog/QorDlgCombo.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/dialog/QorDlgProgress.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "workbench/desktop/peers/Controls.h"
#include "workbench/desktop/peers/WidgetPeer.h"

#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>

namespace qor::desktop {

/// A label; it is the buddy of the control beside it.
class LabelPeer : public PeerOf<QorDlgLabel, QLabel> {
public:
    explicit LabelPeer(QorDialog& widget);
    void neighboursChanged() override;

protected:
    void draw(QorAspects aspects) override;
};

class SeparatorPeer : public PeerOf<QorDlgSeparator, QFrame> {
public:
    explicit SeparatorPeer(QorDialog& widget);
    [[nodiscard]] bool wantsWidth() const override;

protected:
    void draw(QorAspects /*aspects*/) override {}
};

/// One line of text, told of on Enter and on leaving.
class EditorPeer : public PeerOf<QorDlgEditor, QLineEdit> {
public:
    explicit EditorPeer(QorDialog& widget);

    [[nodiscard]] bool wantsWidth() const override { return my().GetVisibleTextWidth() == 0; }

protected:
    void draw(QorAspects aspects) override;
};

class ComboPeer : public PeerOf<QorDlgCombo, QComboBox> {
public:
    explicit ComboPeer(QorDialog& widget);

protected:
    void draw(QorAspects aspects) override;
};

/// A number as its format shows it. Typed text is told of on Enter, on leaving and before a step.
class SpinnerPeer : public PeerOf<QorDlgSpinner, SpinControl> {
public:
    explicit SpinnerPeer(QorDialog& widget);

protected:
    void draw(QorAspects aspects) override;

private:
    /// Whether the peer is still there.
    bool enterTyped();
    void step(int steps);
};

class ProgressPeer : public PeerOf<QorDlgProgress, QProgressBar> {
public:
    explicit ProgressPeer(QorDialog& widget);

    [[nodiscard]] bool wantsWidth() const override { return true; }

protected:
    void draw(QorAspects aspects) override;
};

} // namespace qor::desktop
