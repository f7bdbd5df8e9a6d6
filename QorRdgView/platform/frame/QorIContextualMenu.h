#pragma once

#include "platform/component/QorExtension.h"
#include "platform/frame/QorCmdContainer.h"

/// The contextual menu of an object.
class QorIContextualMenu : public QorInterface {
    QorDeclareInterface(QorIContextualMenu)

    /// The menu, adjusted to the object's present state; null when it has none. It belongs to
    /// the object and is valid as long as the object lives.
    [[nodiscard]] virtual QorCmdContainer* GetContextualMenu() = 0;
};

/// What contextual menus are derived from: an extension of the object with an empty menu, which a
/// derived class fills in its constructor.
class QorExtIContextualMenu : public QorImplements<QorExtension, QorIContextualMenu> {
    QorDeclareClass(QorExtIContextualMenu)

    explicit QorExtIContextualMenu(QorBaseUnknown* iOwner);

    [[nodiscard]] QorCmdContainer* GetContextualMenu() override { return menu.Get(); }

protected:
    ~QorExtIContextualMenu() override;

    QorVar<QorCmdContainer> menu;
};
