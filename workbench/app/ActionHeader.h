#pragma once

#include "platform/frame/QorCommandHeader.h"

namespace qor::app {

struct CommandContext;

/// A command that is done at once, as a row of a table. What it is possible and checked by is asked
/// whenever something of the program has changed.
struct ActionRow {
    const char* name;
    void (*run)(const CommandContext& context);
    bool (*isPossible)(const CommandContext& context) = nullptr; ///< null: always
    bool (*isOn)(const CommandContext& context) = nullptr;       ///< null: nothing to be on or off
};

/// The header of such a command.
class ActionHeader : public QorCommandHeader {
    QorDeclareClass(ActionHeader)

    /// \p row and \p context outlive the header.
    ActionHeader(QorCommand* owner, const ActionRow& row, const CommandContext& context);

    QorResult StartCommand() override;

    [[nodiscard]] bool IsCheckHeader() const override { return row_.isOn != nullptr; }

    /// Takes over what the row answers now.
    void refresh();

protected:
    ~ActionHeader() override = default;

private:
    const ActionRow& row_;
    const CommandContext& context_;
};

} // namespace qor::app
