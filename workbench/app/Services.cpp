#include "workbench/app/Services.h"

#include "platform/engine/QorIRdgWorld.h"
#include "platform/engine/QorRdgEngineManager.h"
#include "platform/vis/QorViewer.h"
#include "quickrender/QorRdgViewerAdapters.h"
#include "workbench/engine/adapter/ViewerWorld.h"

namespace qor::app {

Services::Services() {
    QorPictureService::Install(&pictures_);
    adapter::registerWorldAdapter();
    QorRegisterViewerAdapters();
    auto engine = std::make_unique<adapter::Engine>();
    engine_ = engine.get();
    QorRdgEngineManager::SetEngine(std::move(engine));
}

Services::~Services() {
    QorRdgEngineManager::SetEngine(nullptr);
    QorPictureService::Install(nullptr);
}

void Services::prepareRender(QorViewer& viewer) {
    if (const auto world = QorQuery<QorIRdgWorld>(&viewer))
        engine_->prepare(*world);
}

} // namespace qor::app
