#include "workbench/desktop/viewer/SpaceSurface.h"

#include "platform/vis/QorViewer.h"
#include "workbench/desktop/theme/Theme.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QTimer>

#include <stdexcept>
#include <utility>

namespace qor::desktop {

namespace {

constexpr int majorVersion = 3;
constexpr int minorVersion = 3;
constexpr int patience =
    120; // milliseconds from a quick picture to a look whether a good one is due

QSurfaceFormat wantedFormat() {
    QSurfaceFormat format;
    format.setVersion(majorVersion, minorVersion);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setOption(QSurfaceFormat::DeprecatedFunctions); // wide lines are among them
    format.setSamples(0); // space has samples of its own; what lies over it is exact
    return format;
}

QString findFault() {
    QOpenGLContext context;
    context.setFormat(wantedFormat());
    if (!context.create())
        return QStringLiteral("no OpenGL");
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!context.makeCurrent(&surface))
        return QStringLiteral("no OpenGL");
    const auto version = context.format().version();
    context.doneCurrent();
    if (version < std::pair(majorVersion, minorVersion))
        return QStringLiteral("OpenGL %1.%2").arg(version.first).arg(version.second);
    return {};
}

} // namespace

const QString& SpaceSurface::fault() {
    static const QString found = findFault();
    return found;
}

void SpaceSurface::expectIn(QWidget& window) {
    if (!fault().isEmpty())
        return;
    auto* sign = new QOpenGLWidget(&window); // never shown; Qt looks for one when it makes windows
    sign->setFormat(wantedFormat());
    sign->resize(1, 1);
    sign->hide();
}

SpaceSurface::SpaceSurface(QWidget* parent, Qor3DViewer& viewer, paint::PictureCache& pictures)
    : QOpenGLWidget(parent), viewer_(&viewer), pictures_(pictures) {
    setFormat(wantedFormat());
}

SpaceSurface::~SpaceSurface() {
    release();
}

void SpaceSurface::forget() {
    release();
    viewer_ = nullptr;
    onFault = nullptr;
}

void SpaceSurface::release() {
    if (!composer_)
        return;
    makeCurrent();
    composer_.reset();
    doneCurrent();
}

void SpaceSurface::fail(const QString& reason) {
    const auto hook = std::exchange(onFault, nullptr);
    if (hook)
        hook(reason);
}

void SpaceSurface::initializeGL() {
    // Moved to another window it gets another context.
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &SpaceSurface::release,
            Qt::UniqueConnection);
    if (viewer_ == nullptr)
        return;
    try {
        composer_ = std::make_unique<ViewerComposer>(*context()->extraFunctions(), pictures_);
    } catch (const std::runtime_error& error) {
        fail(QString::fromUtf8(error.what()));
    }
}

void SpaceSurface::paintGL() {
    if (viewer_ == nullptr || !composer_)
        return;
    const QSize size(qRound(width() * devicePixelRatioF()), qRound(height() * devicePixelRatioF()));
    if (size.isEmpty())
        return;
    ViewerLook look = ViewerLook::of(Theme::colors());
    look.pixelRatio = static_cast<float>(devicePixelRatioF());
    look.edges = viewer_->AreEdgesShown();
    composer_->compose(*viewer_, size, look, defaultFramebufferObject(), *this);
    if (composer_->isQuick())
        QTimer::singleShot(patience, this, [this] { update(); });
}

QImage SpaceSurface::picture() {
    QImage image = grabFramebuffer();
    image.setDevicePixelRatio(1.0);
    return image;
}

} // namespace qor::desktop
