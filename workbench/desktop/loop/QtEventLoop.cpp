#include "workbench/desktop/loop/QtEventLoop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

namespace qor::desktop {

namespace {

QEvent::Type wakeEventType() {
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

} // namespace

/// Where wake-ups arrive, and the one timer that is armed for the next of the loop's.
class QtEventLoop::Waker : public QObject {
public:
    explicit Waker(QtEventLoop& loop) : loop_(loop) {
        timer_.setSingleShot(true);
        timer_.setTimerType(Qt::PreciseTimer);
        connect(&timer_, &QTimer::timeout, this, [this] { loop_.serve(); });
    }

    void arm(std::chrono::milliseconds time) {
        if (time.count() < 0)
            timer_.stop();
        else
            timer_.start(time);
    }

    bool event(QEvent* event) override {
        if (event->type() != wakeEventType())
            return QObject::event(event);
        loop_.serve();
        return true;
    }

private:
    QtEventLoop& loop_;
    QTimer timer_;
};

QtEventLoop::QtEventLoop() : waker_(std::make_unique<Waker>(*this)) {}

QtEventLoop::~QtEventLoop() = default;

void QtEventLoop::run() {
    if (IsQuitting())
        return;
    Wake();
    QCoreApplication::exec();
}

void QtEventLoop::Quit() {
    QorEventLoop::Quit();
    // Not quit(): that would ask the windows first.
    QCoreApplication::exit(0);
}

void QtEventLoop::Wait(std::chrono::milliseconds iTime) {
    if (iTime.count() == 0) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        return;
    }
    QTimer limit;
    if (iTime.count() > 0)
        limit.start(iTime);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void QtEventLoop::Wake() {
    if (!woken_.exchange(true))
        QCoreApplication::postEvent(waker_.get(), new QEvent(wakeEventType()),
                                    Qt::LowEventPriority);
}

void QtEventLoop::DeadlineChanged() {
    waker_->arm(TimeToNextTimer());
}

void QtEventLoop::serve() {
    woken_ = false;
    RunSlice();
    DeadlineChanged();
}

} // namespace qor::desktop
