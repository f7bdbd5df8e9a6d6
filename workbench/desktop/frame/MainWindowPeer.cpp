#include "workbench/desktop/frame/MainWindowPeer.h"

#include "workbench/desktop/frame/CommandActions.h"
#include "workbench/desktop/frame/DocumentArea.h"
#include "workbench/desktop/frame/StatusArea.h"
#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/peers/WindowParts.h"
#include "workbench/desktop/viewer/SpaceSurface.h"

#include <QCloseEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QToolBar>
#include <QUrl>

namespace qor::desktop {

namespace {

std::vector<QorUnicodeString> filesIn(const QMimeData* data) {
    std::vector<QorUnicodeString> files;
    if (data == nullptr)
        return files;
    const QList<QUrl> urls = data->urls();
    for (const QUrl& url : urls)
        if (url.isLocalFile())
            files.push_back(fromQt(url.toLocalFile()));
    return files;
}

} // namespace

/// Asks instead of closing, and takes files.
class MainWindowPeer::Window : public QMainWindow {
public:
    std::function<void()> onClose;
    std::function<void(std::vector<QorUnicodeString>)> onDrop;

    Window() { setAcceptDrops(true); }

    QMenu* createPopupMenu() override { return nullptr; } // its tool bars are not hidden one by one

protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        const auto close = onClose;
        close();
    }

    void dragEnterEvent(QDragEnterEvent* event) override {
        if (!filesIn(event->mimeData()).empty())
            event->acceptProposedAction();
    }

    void dropEvent(QDropEvent* event) override {
        event->acceptProposedAction();
        const auto drop = onDrop;
        drop(filesIn(event->mimeData()));
    }
};

MainWindowPeer::MainWindowPeer(QorDialog& widget) : ContainerPeer(widget) {
    auto* window = new Window;
    setControl(window);
    window->onClose = whileAlive([this] { report([this] { return my().UserClose(); }, 0); });
    // Later: a question box must not open while the program that the files come from waits.
    window->onDrop = whileAlive([this](std::vector<QorUnicodeString> files) {
        QMetaObject::invokeMethod(
            context(),
            [this, files = std::move(files)] {
                report([&] { return my().UserDropFiles(files); }, 0);
            },
            Qt::QueuedConnection);
    });
    build();
}

MainWindowPeer::~MainWindowPeer() = default;

void MainWindowPeer::build() {
    constexpr QSize startSize(1280, 800);
    documents_ = new DocumentArea(&window());
    window().setCentralWidget(documents_);
    setInside(documents_);
    status_ = new StatusArea(&window());
    window().setStatusBar(status_);
    status_->onCancel =
        whileAlive([this] { report([this] { return my().UserCancelProgress(); }, 0); });
    window().resize(startSize);
    SpaceSurface::expectIn(window());
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
    if ((aspects & (QorAspectValue | QorAspectRange)) != 0)
        status_->show(my());
}

void MainWindowPeer::arrangeChildren() {
    documents_->refresh();
}

void MainWindowPeer::drawVisibility() {
    const bool visible = my().GetVisibility() == QorDlgSHOW;
    if (visible == window().isVisible())
        return;
    if (visible) {
        fillBars();
        documents_->refresh();
    }
    showWindow(window(), visible);
}

void MainWindowPeer::Raise() {
    if (control() != nullptr)
        showWindow(window(), true);
}

} // namespace qor::desktop
