#include "workbench/desktop/peers/DialogPeer.h"

#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/vis/QorViewer.h"
#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/peers/WindowParts.h"
#include "workbench/desktop/theme/Icon.h"

#include <QAbstractButton>
#include <QFontMetrics>
#include <QGroupBox>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace qor::desktop {

namespace {

/// What draws the viewer of the current document window, or null.
QWidget* currentViewer() {
    const QorFrmLayout* layout = QorFrmLayout::GetCurrentLayout();
    const QorFrmWindow* window = layout != nullptr ? layout->GetCurrentWindow() : nullptr;
    const WidgetPeer* peer = window != nullptr ? WidgetPeer::of(window->GetViewer()) : nullptr;
    return peer != nullptr ? peer->control() : nullptr;
}

constexpr int dialogMargin = 16;
constexpr int groupMargin = 12;
constexpr int toolMargin = 8;
constexpr int titleHeight = 32; // until the window manager has drawn it

QMargins frameOf(const QWidget& window) {
    const QRect inside = window.geometry();
    const QRect outside = window.frameGeometry();
    return {inside.left() - outside.left(), inside.top() - outside.top(),
            outside.right() - inside.right(), outside.bottom() - inside.bottom()};
}

struct StyleButton {
    QorDlgStyle bit;
    QDialogButtonBox::StandardButton button;
};

constexpr StyleButton styleButtons[] = {
    {QorDlgWndOK, QDialogButtonBox::Ok},
    {QorDlgWndCANCEL, QDialogButtonBox::Cancel},
    {QorDlgWndAPPLY, QDialogButtonBox::Apply},
};

} // namespace

/// Reports the window's size once for a row of changes, and never from inside the change itself,
/// which may be one by program.
class DialogPeer::SizeFilter : public QObject {
public:
    SizeFilter(DialogPeer& peer, QObject* parent) : QObject(parent), peer_(peer) {}

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Resize && !peer_.sizeWaits_) {
            peer_.sizeWaits_ = true;
            QMetaObject::invokeMethod(
                this, [this] { peer_.sizeChanged(); }, Qt::QueuedConnection);
        }
        if (event->type() == QEvent::LayoutRequest)
            peer_.grow();
        return QObject::eventFilter(object, event);
    }

private:
    DialogPeer& peer_;
};

DialogPeer::DialogPeer(QorDialog& widget) : ContainerPeer(widget) {
    auto* window = new Window(ownerFor(widget));
    setControl(window);
    applyWindowStyle(*window, widget);
    window->setSizeGripEnabled(false);
    build(*window);
    connectHooks(*window);
    window->installEventFilter(new SizeFilter(*this, context()));
}

DialogPeer::~DialogPeer() {
    giveKeyboardBack();
}

void DialogPeer::build(Window& window) {
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addItem(titleRoom_ = new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Fixed));
    layout->setSizeConstraint((my().GetStyle() & QorDlgWndNoResize) != 0 ? QLayout::SetFixedSize
                                                                         : QLayout::SetMinimumSize);
    auto* content = new QWidget(&window);
    layout->addWidget(content, 1);
    setInside(content);
    addButtons(window, *layout);
}

void DialogPeer::addButtons(Window& window, QLayout& layout) {
    QDialogButtonBox::StandardButtons wanted;
    for (const StyleButton& one : styleButtons)
        if ((my().GetStyle() & one.bit) != 0)
            wanted |= one.button;
    if (wanted == QDialogButtonBox::NoButton)
        return;
    buttons_ = new QDialogButtonBox(wanted, &window);
    buttons_->setContentsMargins(dialogMargin, 0, dialogMargin, dialogMargin);
    layout.addWidget(buttons_);
    if (QPushButton* ok = buttons_->button(QDialogButtonBox::Ok))
        ok->setDefault(true);
}

void DialogPeer::connectHooks(Window& window) {
    window.onOK = whileAlive([this] { report([this] { return my().UserOK(); }, 0); });
    window.onClose = whileAlive([this] { report([this] { return my().UserClose(); }, 0); });
    // Escape in a dialog that has no Cancel is its close box.
    const bool cancels = (my().GetStyle() & QorDlgWndCANCEL) != 0;
    window.onCancel = cancels
                          ? whileAlive([this] { report([this] { return my().UserCancel(); }, 0); })
                          : window.onClose;
    if (buttons_ == nullptr)
        return;
    QObject::connect(buttons_, &QDialogButtonBox::accepted, &window, &QDialog::accept);
    QObject::connect(buttons_, &QDialogButtonBox::rejected, &window, &QDialog::reject);
    if (QPushButton* apply = buttons_->button(QDialogButtonBox::Apply))
        QObject::connect(apply, &QPushButton::clicked, context(),
                         [this] { report([this] { return my().UserApply(); }, 0); });
}

int DialogPeer::margin() const {
    return (widget().GetStyle() & QorDlgWndToolBar) != 0 ? toolMargin : dialogMargin;
}

void DialogPeer::sizeChanged() {
    sizeWaits_ = false;
    if (control() == nullptr || inside() == nullptr || !control()->isVisible())
        return;
    const QSize size = inside()->size();
    report([&] { return my().UserResize(size.width(), size.height()); }, 0);
}

/// A dialog that gets other contents gives them the size they like, not the least they can live
/// with, unless a person has chosen its size or the screen is too small.
void DialogPeer::grow() {
    if (control() == nullptr || (my().GetStyle() & QorDlgWndNoResize) != 0)
        return;
    QWidget& window = *control();
    const QSize now = window.size();
    if (window.isVisible() && now != given_.expandedTo(window.minimumSize()))
        return;
    const QMargins frame = window.isVisible() ? frameOf(window) : QMargins(0, 0, 0, titleHeight);
    const QSize room = window.screen()->availableSize().shrunkBy(frame);
    const QSize wanted = window.sizeHint().boundedTo(room).expandedTo(window.minimumSize());
    given_ = window.isVisible() ? now.expandedTo(wanted) : wanted;
    window.resize(given_);
}

void DialogPeer::draw(QorAspects aspects) {
    ContainerPeer::draw(aspects);
    if ((aspects & QorAspectTitle) != 0)
        drawTitle(toQt(widget().GetTitle()));
    if ((aspects & QorAspectIcon) != 0)
        control()->setWindowIcon(icon(toQt(widget().GetIconName())));
}

/// A window is at least as wide as a window manager needs to show its title whole, within reason.
void DialogPeer::drawTitle(const QString& title) {
    constexpr int besideTheTitle = 120; // icon and buttons
    constexpr int most = 400;
    QFont bold = control()->font();
    bold.setBold(true);
    const int width = QFontMetrics(bold).horizontalAdvance(title) + besideTheTitle;
    control()->setWindowTitle(title);
    titleRoom_->changeSize(std::min(width, most), 0, QSizePolicy::Minimum, QSizePolicy::Fixed);
    control()->layout()->invalidate();
}

void DialogPeer::drawVisibility() {
    const bool show = widget().GetVisibility() == QorDlgSHOW;
    if (show == control()->isVisible())
        return;
    if (show) {
        layOutNow();
        if (!given_.isValid())
            grow();
        place();
        focusFirst();
    } else {
        giveKeyboardBack();
    }
    showWindow(*control(), show);
}

/// A frame of tools starts at the top left of what is looked at, what it opens beside it; Qt
/// centres the others.
void DialogPeer::place() const {
    const QWidget* owner = control()->parentWidget();
    if (owner == nullptr)
        return;
    if ((widget().GetStyle() & QorDlgWndToolBar) == 0) {
        if (owner->windowType() == Qt::Tool && owner->isVisible())
            placeBesideTools(*owner);
        return;
    }
    constexpr QPoint belowTheBars(24, 112);
    constexpr QPoint inTheCorner(16, 16);
    const QWidget* viewer = currentViewer();
    control()->move(viewer != nullptr ? viewer->mapToGlobal(inTheCorner)
                                      : owner->mapToGlobal(belowTheBars));
}

void DialogPeer::placeBesideTools(const QWidget& tools) const {
    const QSize size = control()->size().grownBy(frameOf(tools));
    control()->move(placeBeside(tools.frameGeometry(), size, tools.screen()->availableGeometry()));
}

/// A dialog begins at its first control, so that it can be used by the keyboard at once.
void DialogPeer::focusFirst() const {
    if (control()->focusWidget() != nullptr || (widget().GetStyle() & QorDlgWndToolBar) != 0)
        return;
    std::vector<QWidget*> stops;
    addTabStops(stops);
    for (QWidget* stop : stops)
        if (stop->isEnabled() && !stop->isHidden() && (stop->focusPolicy() & Qt::TabFocus) != 0) {
            stop->setFocus(Qt::ActiveWindowFocusReason);
            return;
        }
}

/// Window managers pass over frames of tools when they look for who comes next.
void DialogPeer::giveKeyboardBack() const {
    const QWidget* owner = control() != nullptr ? control()->parentWidget() : nullptr;
    if (owner != nullptr && control()->isActiveWindow() && owner->window()->isVisible())
        owner->window()->activateWindow();
}

void DialogPeer::Raise() {
    if (control() != nullptr)
        showWindow(*control(), true);
}

void DialogPeer::addTabStops(std::vector<QWidget*>& stops) const {
    ContainerPeer::addTabStops(stops);
    if (buttons_ != nullptr)
        for (QAbstractButton* button : buttons_->buttons())
            stops.push_back(button);
}

FramePeer::FramePeer(QorDialog& widget) : ContainerPeer(widget) {
    QWidget* parent = parentFor(widget);
    QWidget* control = isBordered() ? new QGroupBox(parent) : new QWidget(parent);
    setControl(control);
    setInside(control);
}

bool FramePeer::isBordered() const {
    constexpr QorDlgStyle plain = QorDlgFraNoTitle | QorDlgFraNoFrame;
    return (widget().GetStyle() & plain) == 0;
}

int FramePeer::margin() const {
    return isBordered() ? groupMargin : 0;
}

void FramePeer::draw(QorAspects aspects) {
    ContainerPeer::draw(aspects);
    if ((aspects & QorAspectTitle) != 0)
        if (auto* group = qobject_cast<QGroupBox*>(control()))
            group->setTitle(toQt(widget().GetTitle()));
}

} // namespace qor::desktop
