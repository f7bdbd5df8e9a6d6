#pragma once

#include "platform/dialog/QorDlgFile.h"
#include "workbench/desktop/peers/WidgetPeer.h"
#include "workbench/desktop/peers/WindowControl.h"

#include <QFileDialog>

class QComboBox;
class QLineEdit;

namespace qor::desktop {

/// Qt's own file dialog with every decision taken out: OK gives the path as it was typed and leaves
/// the dialog open. Only a directory is entered instead.
class FileControl : public WindowControl<QFileDialog> {
public:
    explicit FileControl(QWidget* parent);

    std::function<void(const QString&)> onAccept;

    void accept() override;

    [[nodiscard]] QLineEdit* nameEditor() const;
    [[nodiscard]] QComboBox* filterCombo() const;

private:
    /// What is typed, or else selected.
    [[nodiscard]] QString chosen() const;
};

class FilePeer : public PeerOf<QorDlgFile, FileControl> {
public:
    explicit FilePeer(QorDialog& widget);
    void Raise() override;

protected:
    void draw(QorAspects aspects) override;
    void drawVisibility() override;

private:
    void connectHooks();
    void drawPlace();
    void drawFilters();

    bool reporting_ = false; ///< what the person did is on its way down and not to be drawn again
};

} // namespace qor::desktop
