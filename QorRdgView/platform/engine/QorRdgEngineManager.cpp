#include "platform/engine/QorRdgEngineManager.h"

#include "platform/system/QorApplication.h"
#include "platform/system/QorCommand.h"

#include <algorithm>

QorImplementClass(QorRdgEngineManager, QorBaseUnknown)

const QorEventName QorRdgEngineManager::RENDER_DONE = "RENDER_DONE";

namespace {

constexpr std::chrono::milliseconds pumpInterval(5);
constexpr int largestSide = 65535;

QorRdgEngineManager* theManager = nullptr;

QorEventLoop* Loop() {
    const QorApplication* application = QorApplication::MainApplication();
    return application != nullptr ? &application->GetLoop() : nullptr;
}

/// Whether the widget behind a display has been taken out of its window.
bool IsGone(QorIRdgDisplay& iDisplay) {
    const auto* widget = dynamic_cast<QorCommand*>(iDisplay.GetImplementation()->GetIdentity());
    return widget != nullptr && widget->IsDying();
}

bool IsEmpty(const QorRdgWindow& iRegion) {
    return iRegion.x1 >= iRegion.x2 || iRegion.y1 >= iRegion.y2;
}

/// Why nothing can be rendered of a region, or of what is left of it in the picture.
QorUnicodeString CheckRegion(const QorRdgWindow& iRegion, const QorRdgWindow& iClipped) {
    if (IsEmpty(iRegion))
        return "the area to render is empty";
    return IsEmpty(iClipped) ? "the region to render lies outside the picture" : "";
}

QorRdgWindow Clip(const QorRdgWindow& iRegion, int iWidth, int iHeight) {
    return {std::clamp(iRegion.x1, 0, iWidth), std::clamp(iRegion.y1, 0, iHeight),
            std::clamp(iRegion.x2, 0, iWidth), std::clamp(iRegion.y2, 0, iHeight)};
}

} // namespace

QorRdgEngineManager::QorRdgEngineManager(std::unique_ptr<QorRdgEngine> iEngine)
    : engine(std::move(iEngine)) {}

QorRdgEngineManager::~QorRdgEngineManager() {
    if (QorEventLoop* loop = Loop()) {
        loop->StopTimer(pump);
        loop->StopTimer(settling);
    }
}

QorRdgEngineManager* QorRdgEngineManager::GetManager() {
    return theManager;
}

void QorRdgEngineManager::SetEngine(std::unique_ptr<QorRdgEngine> iEngine) {
    if (QorRdgEngineManager* old = std::exchange(theManager, nullptr))
        old->Release();
    if (iEngine)
        theManager = new QorRdgEngineManager(std::move(iEngine));
}

QorUnicodeString QorRdgEngineManager::CheckSize(int iWidth, int iHeight) {
    if (iWidth > 0 && iHeight > 0 && iWidth <= largestSide && iHeight <= largestSide)
        return {};
    return "a picture of " + std::to_string(iWidth) + " by " + std::to_string(iHeight) +
           " pixels cannot be rendered: each side must be 1 to " + std::to_string(largestSide);
}

QorResult QorRdgEngineManager::StartRender(QorIRdgWorld* iWorld,
                                           QorIRdgDisplay* iDisplay,
                                           QorIRdgOptions* iOptions,
                                           bool iInteractive,
                                           int iWidth,
                                           int iHeight,
                                           const QorRdgWindow* iRegion,
                                           bool /*iTrace*/,
                                           bool iUpdateDisplay) {
    const QorVar<QorBaseUnknown> alive(this);
    StopRender();
    auto job = std::make_unique<Job>();
    job->record.id = ++lastId;
    job->record.status = Status::Running;
    job->record.width = iWidth;
    job->record.height = iHeight;
    job->display = iDisplay;
    job->tellDisplay = iUpdateDisplay;
    job->showRefinement = showRefinement;
    job->region = {0, 0, iWidth, iHeight};
    QorRdgRequest request;
    request.world = iWorld;
    request.options = iOptions;
    request.width = iWidth;
    request.height = iHeight;
    request.interactive = iInteractive;
    QorUnicodeString reason = CheckSize(iWidth, iHeight);
    if (iRegion != nullptr) {
        job->record.region = *iRegion;
        request.region = Clip(*iRegion, std::max(iWidth, 0), std::max(iHeight, 0));
        job->region = *request.region;
        if (reason.IsNull())
            reason = CheckRegion(*iRegion, job->region);
    }
    if (reason.IsNull() && iWorld == nullptr)
        reason = "there is nothing to render";
    if (reason.IsNull())
        job->render = engine->Start(request, reason);
    if (QorEventLoop* loop = Loop())
        job->started = loop->Now();
    const bool accepted = job->render != nullptr;
    if (!accepted) {
        job->record.status = Status::Refused;
        job->record.message = reason;
        EndNow(std::move(job)); // before the display, which may start another
        if (iDisplay != nullptr)
            iDisplay->SetMessage(reason);
        return E_FAIL;
    }
    waiting = std::move(job);
    BeginNext();
    return S_OK;
}

void QorRdgEngineManager::StopRender() {
    const QorVar<QorBaseUnknown> alive(this);
    End(Status::Aborted);
    if (!waiting)
        return;
    waiting->record.status = Status::Aborted; // before it began
    EndNow(std::move(waiting));
}

void QorRdgEngineManager::BeginNext() {
    if (endsToTell > 0 || running || !waiting)
        return;
    running = std::move(waiting);
    record = running->record;
    if (running->tellDisplay && running->display) {
        int percent = 0;
        running->display->SetProgress(percent);
    }
    StartPump();
}

void QorRdgEngineManager::StartPump() {
    QorEventLoop* loop = Loop();
    if (loop != nullptr && pump == 0)
        pump = loop->StartTimer(
            pumpInterval, [this] { Pump(); }, true);
}

bool QorRdgEngineManager::IsUnwanted(const Job& iJob) const {
    if (callbacks.CountCallbacks(RENDER_DONE) == 0)
        return true;
    if (!iJob.display)
        return false;
    if (IsGone(*iJob.display))
        return true;
    unsigned char abort = 0;
    iJob.display->CheckAbort(abort);
    return abort != 0;
}

void QorRdgEngineManager::Pump() {
    if (!running || displayUpdates > 0)
        return;
    const QorVar<QorBaseUnknown> alive(this);
    if (IsUnwanted(*running)) {
        End(Status::Aborted);
        return;
    }
    const unsigned long id = running->record.id;
    const QorRdgProgress progress = running->render->Poll();
    Tell(*running, progress);
    // A display may let the person act while it repaints: what runs now may be another render, or
    // none.
    if (!running || running->record.id != id || !progress.finished)
        return;
    if (progress.failed)
        running->record.message = progress.message;
    End(progress.failed ? Status::Refused : Status::Done);
}

void QorRdgEngineManager::Tell(Job& ioJob, const QorRdgProgress& iProgress) {
    const QorIRdgDisplay_var display = ioJob.display;
    const unsigned long id = ioJob.record.id;
    const auto isCurrent = [&] {
        return running && running->record.id == id;
    };
    const bool draws = iProgress.picture && (ioJob.showRefinement || iProgress.finished);
    if (iProgress.picture)
        ioJob.picture = iProgress.picture;
    if (!display)
        return;
    if (!iProgress.message.IsNull()) {
        QorUnicodeString text = iProgress.message;
        display->SetMessage(text);
    }
    if (ioJob.tellDisplay && !iProgress.finished) {
        int percent = std::clamp(iProgress.percent, 0, 99);
        display->SetProgress(percent);
    }
    if (draws && isCurrent())
        display->Draw(iProgress.picture);
}

void QorRdgEngineManager::End(Status iStatus) {
    if (!running)
        return;
    std::unique_ptr<Job> job = std::move(running);
    job->record.status = iStatus;
    job->picture = nullptr;
    job->render->Abort(); // detached: it winds down by itself
    if (iStatus == Status::Refused)
        job->render.reset();
    else if (job->render->IsSettled())
        TakePicture(*job);
    if (QorEventLoop* loop = Loop()) {
        const std::chrono::duration<double> time = loop->Now() - job->started;
        job->record.seconds = time.count();
        loop->StopTimer(pump);
    }
    if (job->display && !IsGone(*job->display)) {
        int percent = iStatus == Status::Done ? 100 : -1;
        job->display->SetProgress(percent);
    }
    EndNow(std::move(job));
}

void QorRdgEngineManager::EndNow(std::unique_ptr<Job> iJob) {
    ++endsToTell;
    ended.push_back(std::move(iJob));
    const auto dispatch = [self = QorVar<QorRdgEngineManager>(this), job = ended.back()] {
        job->due = true;
        self->DispatchEnds();
    };
    if (QorEventLoop* loop = Loop())
        loop->Post(dispatch, QorEventLoop::Scope::AnyDepth);
    else
        dispatch();
}

void QorRdgEngineManager::DispatchEnds() {
    const QorVar<QorBaseUnknown> alive(this);
    QorEventLoop* loop = Loop();
    while (!ended.empty() && ended.front()->due) {
        if (loop != nullptr && ended.front()->render && !ended.front()->render->IsSettled()) {
            if (settling == 0)
                settling = loop->StartTimer(
                    pumpInterval, [this] { DispatchEnds(); }, true);
            return;
        }
        const std::shared_ptr<Job> job = std::move(ended.front());
        ended.pop_front();
        DispatchEnd(*job);
    }
    if (loop != nullptr && ended.empty())
        loop->StopTimer(settling);
}

void QorRdgEngineManager::TakePicture(Job& ioJob) {
    ioJob.picture = ioJob.render->GetPicture();
    ioJob.render.reset();
}

void QorRdgEngineManager::DispatchEnd(Job& ioJob) {
    if (ioJob.render)
        TakePicture(ioJob);
    record = ioJob.record;
    lastPicture = ioJob.picture;
    lastRegion = ioJob.region;
    ioJob.display.Reset();
    callbacks.DispatchCallbacks(RENDER_DONE, this);
    if (const EndListener listener = endListener)
        listener(ioJob.record);
    --endsToTell;
    BeginNext();
}

QorResult QorRdgEngineManager::GetLastRender(QorPixelImage*& oImage, QorRdgWindow& oRegion) {
    oImage = nullptr;
    if (!lastPicture)
        return E_FAIL;
    oImage = QorPixelImage_var(lastPicture).Detach();
    oRegion = lastRegion;
    return S_OK;
}
