#pragma once

#include <QWidget>

namespace qor::desktop {

/// The middle of the main window, where documents are shown; without one it says how to begin.
class DocumentArea : public QWidget {
public:
    explicit DocumentArea(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace qor::desktop
