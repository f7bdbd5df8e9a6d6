#pragma once

#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgCombo.h"
#include "platform/dialog/QorDlgDialog.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/dialog/QorDlgProgress.h"
#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"

namespace qor::desktop::tests {

/// A dialog with a control of every kind, usable and disabled side by side.
class GalleryDialog : public QorDlgDialog {
public:
    explicit GalleryDialog(QorCommand* around);

protected:
    ~GalleryDialog() override = default;

private:
    void addButtons();
    void addNumbers();
    void addTexts();
    void addColumn(QorDlgFrame& frame, int column, bool enabled);
    void addNumberColumn(QorDlgFrame& frame, int column, bool enabled);
};

/// A small frame of tools.
class GalleryTools : public QorDlgDialog {
public:
    explicit GalleryTools(QorCommand* around);

protected:
    ~GalleryTools() override = default;
};

} // namespace qor::desktop::tests
