#include "workbench/desktop/frame/DocumentArea.h"

#include "platform/frame/QorFrmWindow.h"
#include "platform/text/QorMsgCatalog.h"
#include "workbench/desktop/QtToolkit.h"
#include "workbench/desktop/frame/DocumentWindowPeer.h"
#include "workbench/desktop/frame/StartPage.h"
#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/theme/Theme.h"

#include <QPaintEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

namespace qor::desktop {

namespace {

QString message(const char* key) {
    return toQt(QorMsgCatalog::BuildMessage("QorDesktop", key));
}

/// The window behind a tab; tabs are in the order of the layout's windows.
QorFrmWindow_var windowAt(int index) {
    const QorFrmLayout* layout = QorFrmLayout::GetCurrentLayout();
    if (layout == nullptr || index < 0 || index >= static_cast<int>(layout->GetWindows().size()))
        return nullptr;
    return QorFrmWindow_var(layout->GetWindows()[static_cast<std::size_t>(index)]);
}

} // namespace

DocumentArea::DocumentArea(QWidget* parent)
    : QWidget(parent)
    , tabs_(new QTabBar(this))
    , pages_(new QStackedWidget(this))
    , startPage_(new StartPage(this)) {
    setAccessibleName(message("DocumentArea"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tabs_);
    column->addWidget(pages_, 1);
    tabs_->setObjectName(QStringLiteral("documentTabs"));
    tabs_->setTabsClosable(true);
    tabs_->setExpanding(false);
    tabs_->setDocumentMode(true);
    tabs_->setDrawBase(false);
    tabs_->setElideMode(Qt::ElideMiddle);
    QObject::connect(tabs_, &QTabBar::currentChanged, this, [](int index) {
        if (const QorFrmWindow_var window = windowAt(index))
            (void)window->UserActivate();
    });
    QObject::connect(tabs_, &QTabBar::tabCloseRequested, this, [](int index) {
        if (const QorFrmWindow_var window = windowAt(index))
            (void)window->UserClose();
    });
    refresh();
}

void DocumentArea::listen() {
    QorFrmLayout* layout = QorFrmLayout::GetCurrentLayout();
    if (layout == nullptr)
        return;
    for (const QorEventName& event :
         {QorFrmWindow::VIEWER_ACTIVATED, QorFrmWindow::WINDOW_DELETED,
          QorFrmEditor::EDITOR_ACTIVATED, QorFrmEditor::EDITOR_CLOSE_ENDED})
        layout->GetCallbackManager()->AddCallback(this, event, &DocumentArea::changed);
}

void DocumentArea::changed(QorEventName /*event*/,
                           QorBaseUnknown* /*publisher*/,
                           QorNotification* /*notification*/,
                           QorSubscriberData /*data*/,
                           QorCallbackId /*cookie*/) {
    refresh();
}

void DocumentArea::refresh() {
    listen();
    const QorFrmLayout* layout = QorFrmLayout::GetCurrentLayout();
    addPages(layout);
    drawTabs(layout);
    const QorFrmWindow* current = layout != nullptr ? layout->GetCurrentWindow() : nullptr;
    if (QWidget* page = controlOf(current); page != nullptr && pages_->indexOf(page) >= 0)
        pages_->setCurrentWidget(page);
    pages_->setVisible(current != nullptr);
    const auto* peer = dynamic_cast<const DocumentWindowPeer*>(WidgetPeer::of(current));
    const bool empty = peer == nullptr || peer->isEmpty();
    if (empty)
        startPage_->refresh();
    startPage_->setVisible(empty);
    placeStartPage();
}

void DocumentArea::addPages(const QorFrmLayout* layout) {
    if (layout == nullptr)
        return;
    for (const QorFrmWindow* window : layout->GetWindows())
        if (QWidget* page = controlOf(window); page != nullptr && pages_->indexOf(page) < 0)
            pages_->addWidget(page);
}

void DocumentArea::drawTabs(const QorFrmLayout* layout) {
    const QSignalBlocker quiet(tabs_);
    const int count = layout != nullptr ? static_cast<int>(layout->GetWindows().size()) : 0;
    while (tabs_->count() > count)
        tabs_->removeTab(tabs_->count() - 1);
    while (tabs_->count() < count)
        tabs_->addTab(QString());
    for (int i = 0; i < count; ++i) {
        const QorFrmWindow* window = layout->GetWindows()[static_cast<std::size_t>(i)];
        // "&" would underline what follows.
        tabs_->setTabText(
            i, toQt(window->GetTitle()).replace(QLatin1String("&"), QLatin1String("&&")));
        if (window == layout->GetCurrentWindow())
            tabs_->setCurrentIndex(i);
    }
    tabs_->setVisible(count > 1);
}

void DocumentArea::placeStartPage() {
    startPage_->setGeometry(rect());
    startPage_->raise();
}

void DocumentArea::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeStartPage();
}

void DocumentArea::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), Theme::colors().window);
}

} // namespace qor::desktop
