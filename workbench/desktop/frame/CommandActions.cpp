#include "workbench/desktop/frame/CommandActions.h"

#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/theme/Icon.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QToolBar>

#include <type_traits>

namespace qor::desktop {

/// An action and the header that it shows.
class CommandActions::Link : public QorEventSubscriber {
public:
    Link(QWidget& owner, const QorCmdStarter& starter)
        : action_(new QAction(&owner)), command_(starter.GetCommand()) {
        action_->setObjectName(toQt(command_));
        action_->setText(toQt(starter.GetTitle()));
        QObject::connect(action_, &QAction::triggered, action_,
                         [this, alive = QPointer<QAction>(action_)] {
                             start();
                             if (alive)
                                 refresh();
                         });
        refresh();
    }

    /// Later, because the action may have been what ended everything.
    ~Link() {
        if (action_ == nullptr)
            return;
        action_->disconnect();
        action_->setEnabled(false);
        action_->deleteLater();
    }

    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    [[nodiscard]] QAction* action() const { return action_; }

    void refresh() {
        QorCommandHeader* header = QorCommandHeader::GetHeaderFromList(command_, 1);
        action_->setEnabled(header != nullptr && header->IsAvailable());
        if (header == nullptr)
            return;
        header->GetCallbackManager()->AddCallback(this, QorCommandHeader::HeaderModifiedEvent,
                                                  &Link::modified);
        draw(*header);
    }

private:
    void start() const {
        const QorVar<QorCommandHeader> header(QorCommandHeader::GetHeaderFromList(command_, 1));
        if (header)
            (void)header->UserStart();
    }

    void draw(const QorCommandHeader& header) {
        const QString title = toQt(header.GetTitle());
        const QString help = toQt(header.GetShortHelp());
        const QKeySequence keys(toQt(header.GetShortcut()), QKeySequence::PortableText);
        action_->setText(title);
        action_->setVisible(!title.isEmpty());
        action_->setIcon(icon(toQt(header.GetIconName())));
        action_->setShortcut(keys);
        action_->setStatusTip(toQt(header.GetLongHelp()));
        action_->setWhatsThis(toQt(header.GetLongHelp()));
        const QString tip = help.isEmpty() ? QString(title).remove(QLatin1Char('&')) : help;
        action_->setToolTip(keys.isEmpty() ? tip
                                           : QStringLiteral("%1  %2").arg(
                                                 tip, keys.toString(QKeySequence::NativeText)));
        action_->setCheckable(header.IsCheckHeader());
        action_->setChecked(header.GetCheckState() == QorDlgCheck);
    }

    void modified(QorEventName /*event*/,
                  QorBaseUnknown* /*publisher*/,
                  QorNotification* /*notification*/,
                  QorSubscriberData /*data*/,
                  QorCallbackId /*cookie*/) {
        refresh();
    }

    QPointer<QAction> action_;
    QorString command_;
};

CommandActions::CommandActions(QWidget& owner) : owner_(owner) {}

CommandActions::~CommandActions() = default;

QAction* CommandActions::actionFor(const QorCmdStarter& starter) {
    auto& link = links_[starter.GetCommand().Str()];
    if (link == nullptr || link->action() == nullptr)
        link = std::make_unique<Link>(owner_, starter);
    else
        link->refresh();
    return link->action();
}

template <class Bar>
void CommandActions::fillAny(Bar& bar, QorCmdContainer& container) {
    for (const QorVar<QorCmdAccess>& entry : container.GetEntries()) {
        if (const auto* starter = dynamic_cast<const QorCmdStarter*>(entry.Get()))
            bar.addAction(actionFor(*starter));
        else if (dynamic_cast<const QorCmdSeparator*>(entry.Get()) != nullptr)
            bar.addSeparator();
        else if constexpr (!std::is_same_v<Bar, QToolBar>)
            if (auto* within = dynamic_cast<QorCmdContainer*>(entry.Get()))
                fill(*bar.addMenu(toQt(within->GetTitle())), *within);
    }
}

void CommandActions::fill(QMenuBar& bar, QorCmdContainer& container) {
    fillAny(bar, container);
}

void CommandActions::fill(QMenu& menu, QorCmdContainer& container) {
    menu.setToolTipsVisible(true);
    fillAny(menu, container);
    // A header that has come or gone meanwhile is noticed when somebody looks.
    QObject::connect(
        &menu, &QMenu::aboutToShow, &menu, [this, kept = QorVar<QorCmdContainer>(&container)] {
            for (const QorVar<QorCmdAccess>& entry : kept->GetEntries())
                if (const auto* starter = dynamic_cast<const QorCmdStarter*>(entry.Get()))
                    (void)actionFor(*starter);
        });
}

void CommandActions::fill(QMainWindow& window, QorCmdContainer& container) {
    for (const QorVar<QorCmdAccess>& entry : container.GetEntries()) {
        auto* one = dynamic_cast<QorCmdContainer*>(entry.Get());
        if (one == nullptr)
            continue;
        QToolBar* bar = window.addToolBar(toQt(one->GetTitle()));
        bar->setObjectName(toQt(one->GetName()));
        bar->setMovable(false);
        fillAny(*bar, *one);
    }
}

} // namespace qor::desktop
