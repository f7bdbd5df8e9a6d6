#pragma once

#include "platform/frame/QorCommandHeader.h"

/// An entry of a menu or tool bar.
class QorCmdAccess : public QorCommand {
    QorDeclareClass(QorCmdAccess)

    QorCmdAccess(QorCommand* iFather, const QorString& iName);

    /// Title in menus: by default from the catalog "QorCommandHeaders" under NAME.Title.
    [[nodiscard]] virtual QorUnicodeString GetTitle() const;

protected:
    ~QorCmdAccess() override = default;
};

/// An entry that starts a command header, looked up by name when it is used.
class QorCmdStarter : public QorCmdAccess {
    QorDeclareClass(QorCmdStarter)

    QorCmdStarter(QorCommand* iFather,
                  const QorString& iName,
                  const QorString& iHeader = QorString());

    void SetCommand(const QorString& iHeader) { headerName = iHeader; }

    [[nodiscard]] const QorString& GetCommand() const { return headerName; }

    /// The header, or null while there is none of that name.
    [[nodiscard]] QorCommandHeader* GetHeader() const {
        return QorCommandHeader::GetHeaderFromList(headerName, 1);
    }

    [[nodiscard]] QorUnicodeString GetTitle() const override;

protected:
    ~QorCmdStarter() override = default;

private:
    QorString headerName;
};

/// A line between entries.
class QorCmdSeparator : public QorCmdAccess {
    QorDeclareClass(QorCmdSeparator)

    QorCmdSeparator(QorCommand* iFather, const QorString& iName);

protected:
    ~QorCmdSeparator() override = default;
};

/// A menu, a tool bar, or a part of one: entries in order.
class QorCmdContainer : public QorCmdAccess {
    QorDeclareClass(QorCmdContainer)

    QorCmdContainer(QorCommand* iFather, const QorString& iName);

    /// Appends an entry; the container holds a reference.
    void AddChild(QorCmdAccess* iEntry);

    [[nodiscard]] const std::vector<QorVar<QorCmdAccess>>& GetEntries() const { return entries; }

protected:
    ~QorCmdContainer() override = default;

private:
    std::vector<QorVar<QorCmdAccess>> entries;
};
