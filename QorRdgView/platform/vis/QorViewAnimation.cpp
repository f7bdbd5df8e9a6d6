#include "platform/vis/QorViewAnimation.h"

#include "platform/system/QorApplication.h"

#include <utility>

namespace {

constexpr std::chrono::milliseconds period{15};

/// Quick at first, at rest at the end.
double Eased(double iPart) {
    const double left = 1.0 - iPart;
    return 1.0 - left * left * left;
}

} // namespace

QorViewAnimation::QorViewAnimation(Qor3DViewpoint& iViewpoint, std::function<void()> iChanged)
    : viewpoint(iViewpoint), changed(std::move(iChanged)) {}

QorViewAnimation::~QorViewAnimation() {
    Stop();
}

void QorViewAnimation::Start(const QorView& iTo) {
    Stop();
    to = iTo;
    const QorVar<Qor3DViewpoint> alive(&viewpoint);
    viewpoint.SetAnimated(true);
    QorApplication* application = QorApplication::MainApplication();
    if (application == nullptr) {
        Finish();
        return;
    }
    from = QorView::Of(viewpoint);
    begin = application->GetLoop().Now();
    Stop(); // whoever was told of the begin may have begun another change
    timer = application->GetLoop().StartTimer(
        period, [this] { Step(); }, true);
}

void QorViewAnimation::Stop() {
    QorApplication* application = QorApplication::MainApplication();
    if (application != nullptr)
        application->GetLoop().StopTimer(timer);
    timer = 0;
}

void QorViewAnimation::Step() {
    const auto past = QorApplication::MainApplication()->GetLoop().Now() - begin;
    if (past >= duration) {
        Finish();
        return;
    }
    const double part =
        std::chrono::duration<double>(past) / std::chrono::duration<double>(duration);
    from.Towards(to, Eased(part)).ApplyTo(viewpoint);
    changed();
}

void QorViewAnimation::Finish() {
    Stop();
    const QorVar<Qor3DViewpoint> alive(&viewpoint);
    to.ApplyTo(viewpoint);
    changed();
    alive->SetAnimated(false); // the last thing: whoever hears it may destroy the viewer
}
