#include "workbench/desktop/frame/MainWindowPeer.h"

#include "workbench/desktop/frame/CommandActions.h"
#include "workbench/desktop/frame/DocumentArea.h"
#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/peers/WindowParts.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

namespace qor::desktop {

/// Asks instead of closing.
class MainWindowPeer::Window : public QMainWindow {
public:
    std::function<void()> onClose;

    QMenu* createPopupMenu() override { return nullptr; } // its tool bars are not hidden one by one

protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        const auto close = onClose;
        close();
    }
};

MainWindowPeer::MainWindowPeer(QorDialog& widget) : ContainerPeer(widget) {
    auto* window = new Window;
    setControl(window);
    window->onClose = whileAlive([this] { report([this] { return my().UserClose(); }, 0); });
    build();
}

MainWindowPeer::~MainWindowPeer() = default;

void MainWindowPeer::build() {
    constexpr QSize startSize(1280, 800);
    constexpr int statusMargin = 12;
    auto* document = new DocumentArea(&window());
    window().setCentralWidget(document);
    setInside(document);
    status_ = new QLabel(&window());
    status_->setTextFormat(Qt::PlainText);
    status_->setContentsMargins(statusMargin, 0, statusMargin, 0);
    window().statusBar()->addWidget(status_, 1);
    window().statusBar()->setSizeGripEnabled(false);
    window().resize(startSize);
}

void MainWindowPeer::fillBars() {
    window().menuBar()->clear();
    qDeleteAll(window().menuBar()->findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
    const auto bars = window().findChildren<QToolBar*>();
    for (QToolBar* bar : bars)
        delete bar;
    actions_ = std::make_unique<CommandActions>(window());
    actions_->fill(*window().menuBar(), *my().GetMenuBar());
    actions_->fill(window(), *my().GetToolBars());
}

void MainWindowPeer::draw(QorAspects aspects) {
    ContainerPeer::draw(aspects);
    if ((aspects & QorAspectTitle) != 0)
        window().setWindowTitle(toQt(my().GetTitle()));
    if ((aspects & QorAspectValue) != 0)
        status_->setText(toQt(my().GetStatus()));
}

void MainWindowPeer::drawVisibility() {
    const bool visible = my().GetVisibility() == QorDlgSHOW;
    if (visible == window().isVisible())
        return;
    if (visible)
        fillBars();
    showWindow(window(), visible);
}

void MainWindowPeer::Raise() {
    if (control() != nullptr)
        showWindow(window(), true);
}

} // namespace qor::desktop
