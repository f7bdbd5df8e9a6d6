#include "workbench/desktop/viewer/ViewerControl.h"

#include "workbench/desktop/theme/Theme.h"
#include "workbench/desktop/viewer/ViewerInput.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace qor::desktop {

ViewerControl::ViewerControl(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void ViewerControl::setContent(QWidget* content) {
    content_ = content;
    content->setAttribute(Qt::WA_TransparentForMouseEvents);
    content->setFocusPolicy(Qt::NoFocus);
    content->setGeometry(rect());
}

void ViewerControl::showMessage(const QString& message) {
    message_ = message;
    if (content_ != nullptr)
        content_->hide();
    setAccessibleDescription(message);
    update();
}

QSize ViewerControl::deviceSize() const {
    return {std::max(1, qRound(width() * devicePixelRatioF())),
            std::max(1, qRound(height() * devicePixelRatioF()))};
}

void ViewerControl::setNaturalSize(const QSize& size) {
    naturalSize_ = size;
    updateGeometry();
}

QSize ViewerControl::minimumSizeHint() const {
    constexpr int least = 48;
    return naturalSize_.boundedTo(QSize(least, least));
}

bool ViewerControl::event(QEvent* event) {
    if ((event->type() == QEvent::ScreenChangeInternal || event->type() == QEvent::Show) &&
        onGeometry) {
        const bool handled = QWidget::event(event);
        const auto geometry = onGeometry;
        geometry();
        return handled;
    }
    return QWidget::event(event);
}

void ViewerControl::tell(QMouseEvent& event) {
    const std::optional<QorMouseEvent> mouse =
        mouseEventOf(event, devicePixelRatioF(), mapTo(window(), QPointF()));
    const auto hook = onMouse; // the control may go in it
    event.setAccepted(mouse && hook && hook(*mouse));
}

void ViewerControl::mousePressEvent(QMouseEvent* event) {
    tell(*event);
}

void ViewerControl::mouseReleaseEvent(QMouseEvent* event) {
    tell(*event);
}

void ViewerControl::mouseDoubleClickEvent(QMouseEvent* event) {
    tell(*event);
}

void ViewerControl::mouseMoveEvent(QMouseEvent* event) {
    tell(*event);
}

void ViewerControl::wheelEvent(QWheelEvent* event) {
    const std::optional<QorMouseEvent> mouse = wheelEventOf(*event, devicePixelRatioF());
    const auto hook = onMouse;
    event->setAccepted(mouse && hook && hook(*mouse));
}

void ViewerControl::keyPressEvent(QKeyEvent* event) {
    const auto hook = onKey;
    if (!hook || !hook(*event))
        QWidget::keyPressEvent(event);
}

void ViewerControl::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (content_ != nullptr)
        content_->setGeometry(rect());
    const auto geometry = onGeometry;
    if (geometry)
        geometry();
}

void ViewerControl::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (!message_.isEmpty())
        paintMessage(painter);
    else if (onPaint)
        onPaint(painter);
    else
        painter.fillRect(rect(), Theme::colors().field);
}

void ViewerControl::paintMessage(QPainter& painter) const {
    constexpr int margin = 16;
    painter.fillRect(rect(), Theme::colors().field);
    painter.setPen(Theme::colors().muted);
    painter.drawText(rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignCenter | Qt::TextWordWrap, message_);
}

} // namespace qor::desktop
