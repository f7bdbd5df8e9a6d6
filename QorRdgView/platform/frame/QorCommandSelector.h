#pragma once

#include "platform/system/QorCommand.h"

#include <vector>

/// Knows which of the running commands a person works with: the one that was activated last and
/// still lives.
class QorCommandSelector {
public:
    QorCommandSelector(const QorCommandSelector&) = delete;
    QorCommandSelector& operator=(const QorCommandSelector&) = delete;

    [[nodiscard]] static QorCommandSelector* GetDefaultCommandSelectorInstance();

    /// The activated command, or null. No reference added.
    [[nodiscard]] QorCommand* GetActivatedCommand() const;

    /// Makes \p iCommand the activated one. It calls Deactivate before it is destroyed.
    void Activate(QorCommand* iCommand);
    /// Takes \p iCommand out; the one activated before it is activated again.
    void Deactivate(QorCommand* iCommand);

private:
    QorCommandSelector() = default;

    std::vector<QorCommand*> commands; ///< the activated one last
};
