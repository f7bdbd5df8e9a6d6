#pragma once

#include "platform/dialog/QorDlgStyle.h"
#include "platform/system/QorCommand.h"

#include <functional>
#include <optional>
#include <vector>

/// What menus, tool bars and other code start a command by: a name, texts, an availability. Headers
/// are registered by name for as long as they live. Texts come from the message catalog
/// "QorCommandHeaders" under NAME.Title, NAME.ShortHelp, NAME.LongHelp, NAME.Icon and
/// NAME.Shortcut.
class QorCommandHeader : public QorCommand {
    QorDeclareClass(QorCommandHeader)

    /// Makes the command that the header starts, a child of \p iHeader; null when it cannot or
    /// when the command is done at once.
    using Creator = std::function<QorCommand*(QorCommandHeader& iHeader)>;

    /// Dispatched by a header's callback manager each time it becomes available.
    static const QorEventName BecomeAvailableEvent;
    /// Dispatched when availability, check state or texts have changed; for menus that show the
    /// header.
    static const QorEventName HeaderModifiedEvent;

    /// Without \p iCreator starting and ending only switch the availability.
    QorCommandHeader(QorCommand* iFather, const QorString& iName, Creator iCreator = {});

    [[nodiscard]] QorUnicodeString GetTitle() const;
    /// A title that no catalog has, as that of a recent file; menus leave out a header whose title
    /// is empty.
    void SetTitle(const QorUnicodeString& iTitle);
    [[nodiscard]] QorUnicodeString GetShortHelp() const;
    [[nodiscard]] QorUnicodeString GetLongHelp() const;
    void SetLongHelp(const QorUnicodeString& iText);
    [[nodiscard]] QorString GetIconName() const;
    /// A key sequence in portable form, "Ctrl+O"; empty for none.
    [[nodiscard]] QorString GetShortcut() const;

    [[nodiscard]] bool IsAvailable() const { return available; }

    /// Makes the header available or not without starting anything.
    void BecomeAvailable();
    void BecomeUnavailable();

    /// Starts the command. While a command made by the creator lives, the header is unavailable; a
    /// header without creator becomes unavailable. E_FAIL, and nothing happens, when it is not
    /// available.
    virtual QorResult StartCommand();
    /// Ends the running command (delayed destruction), if any, and makes the header available.
    virtual QorResult EndCommand();

    /// A person's click in a menu or tool bar, or the automation port's: StartCommand, except for
    /// headers that tell the two apart.
    virtual QorResult UserStart() { return StartCommand(); }

    /// The running command, or null.
    [[nodiscard]] QorCommand* GetCommand() const { return command; }

    /// Whether it shows a check state (QorCheckHeader).
    [[nodiscard]] virtual bool IsCheckHeader() const { return false; }

    [[nodiscard]] QorDlgCheckState GetCheckState() const { return checkState; }

    /// With \p iNotify a change starts or ends the command as a click does; without, only the state
    /// changes.
    virtual void SetCheckState(QorDlgCheckState iState, QorDlgNotifyFlag iNotify = QorDlgNoNotify);

    /// The header of that name, or null; \p iLevel 1 looks among all headers of the program.
    [[nodiscard]] static QorCommandHeader* GetHeaderFromList(const QorString& iName,
                                                             int iLevel = 1);
    /// All headers, in the order of their making.
    [[nodiscard]] static std::vector<QorCommandHeader*> GetAll();

protected:
    ~QorCommandHeader() override;
    void ChildRemoved(QorCommand& iChild) override;
    void StateChanged();
    /// Makes the command through the creator and leaves the availability alone; whether one runs
    /// now.
    bool RunCommand();
    /// Ends the running command, if any, and leaves the availability alone.
    void DropCommand();
    /// The running command has ended by itself, or its father has destroyed it.
    virtual void CommandEnded();
    /// Sets the check state alone; whether that was a change.
    bool ChangeCheckState(QorDlgCheckState iState);

private:
    Creator creator;
    std::optional<QorUnicodeString> ownTitle;
    std::optional<QorUnicodeString> ownLongHelp;
    QorCommand* command = nullptr;
    bool available = true;
    QorDlgCheckState checkState = QorDlgUncheck;
};

/// A header that is on or off: a start checks it and runs the command, the next one unchecks it and
/// ends the command. It stays available meanwhile.
class QorCheckHeader : public QorCommandHeader {
    QorDeclareClass(QorCheckHeader)

    QorCheckHeader(QorCommand* iFather, const QorString& iName, Creator iCreator = {});

    [[nodiscard]] bool IsCheckHeader() const override { return true; }

    QorResult StartCommand() override;
    QorResult EndCommand() override;
    void SetCheckState(QorDlgCheckState iState, QorDlgNotifyFlag iNotify = QorDlgNoNotify) override;

protected:
    ~QorCheckHeader() override;
    void CommandEnded() override;
};
