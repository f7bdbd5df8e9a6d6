#pragma once

#include "platform/engine/QorRdgEngine.h"
#include "workbench/engine/adapter/RenderTask.h"

namespace qor::adapter {

/// A task as the engine manager polls it. User-interface thread.
class RunningRender : public QorRdgRender {
public:
    explicit RunningRender(std::shared_ptr<RenderTask> task) : task_(std::move(task)) {}

    ~RunningRender() override;
    RunningRender(const RunningRender&) = delete;
    RunningRender& operator=(const RunningRender&) = delete;
    RunningRender(RunningRender&&) = delete;
    RunningRender& operator=(RunningRender&&) = delete;

    QorRdgProgress Poll() override;

    void Abort() override { task_->abort(true); }

    bool IsSettled() const override { return task_->isSettled(); }

    QorPixelImage_var GetPicture() override;

private:
    std::shared_ptr<RenderTask> task_;
};

} // namespace qor::adapter
