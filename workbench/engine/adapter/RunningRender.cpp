#include "workbench/engine/adapter/RunningRender.h"

namespace qor::adapter {

namespace {

QorPixelImage_var imageOf(const MadePicture& picture) {
    constexpr int channels = 4;
    if (!picture)
        return nullptr;
    return QorMake<QorPixelImage>(picture.width, picture.height, channels, picture.rgba);
}

} // namespace

RunningRender::~RunningRender() {
    task_->abort(false);
}

QorRdgProgress RunningRender::Poll() {
    const RenderTask::News news = task_->takeNews();
    QorRdgProgress progress;
    progress.percent = news.percent;
    progress.finished = news.finished;
    progress.failed = news.failed;
    progress.picture = imageOf(news.picture);
    progress.message = news.message.c_str();
    return progress;
}

QorPixelImage_var RunningRender::GetPicture() {
    return imageOf(task_->wholePicture());
}

} // namespace qor::adapter
