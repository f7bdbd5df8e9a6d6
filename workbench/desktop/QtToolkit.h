#pragma once

#include "platform/dialog/QorToolkit.h"

class QWidget;

namespace qor::desktop {

/// Makes the peers, by a table from the widgets' kinds.
class QtToolkit : public QorToolkit {
public:
    [[nodiscard]] std::unique_ptr<QorPeer> CreatePeer(QorDialog& iWidget) override;
};

/// The Qt widget that draws \p widget, or null when it has no peer of this toolkit.
[[nodiscard]] QWidget* controlOf(const QorDialog* widget);

} // namespace qor::desktop
