#include "workbench/desktop/QtToolkit.h"

#include "workbench/desktop/frame/DocumentWindowPeer.h"
#include "workbench/desktop/frame/MainWindowPeer.h"
#include "workbench/desktop/peers/BoxPeers.h"
#include "workbench/desktop/peers/ButtonPeers.h"
#include "workbench/desktop/peers/DialogPeer.h"
#include "workbench/desktop/peers/FilePeer.h"
#include "workbench/desktop/peers/SlidePeers.h"
#include "workbench/desktop/peers/TextPeers.h"
#include "workbench/desktop/viewer/PlaneViewerPeer.h"
#include "workbench/desktop/viewer/SpaceViewerPeer.h"

#include <string_view>

namespace qor::desktop {

namespace {

template <class Peer>
std::unique_ptr<QorPeer> make(QorDialog& widget) {
    return std::make_unique<Peer>(widget);
}

/// Viewers of the plane and of space are one kind of widget.
std::unique_ptr<QorPeer> makeViewer(QorDialog& widget) {
    return dynamic_cast<Qor3DViewer*>(&widget) != nullptr ? make<SpaceViewerPeer>(widget)
                                                          : make<PlaneViewerPeer>(widget);
}

struct PeerKind {
    std::string_view kind;
    std::unique_ptr<QorPeer> (*make)(QorDialog& widget);
};

constexpr PeerKind peerKinds[] = {
    {"application frame", make<MainWindowPeer>},
    {"document window", make<DocumentWindowPeer>},
    {"dialog", make<DialogPeer>},
    {"frame", make<FramePeer>},
    {"label", make<LabelPeer>},
    {"separator", make<SeparatorPeer>},
    {"push button", make<PushPeer>},
    {"check button", make<CheckPeer>},
    {"radio button", make<RadioPeer>},
    {"editor", make<EditorPeer>},
    {"combo", make<ComboPeer>},
    {"spinner", make<SpinnerPeer>},
    {"slider", make<SliderPeer>},
    {"scroll bar", make<ScrollBarPeer>},
    {"progress bar", make<ProgressPeer>},
    {"file dialog", make<FilePeer>},
    {"notification", make<NotifyPeer>},
    {"color editor", make<ColorPeer>},
    {"viewer", makeViewer},
};

} // namespace

std::unique_ptr<QorPeer> QtToolkit::CreatePeer(QorDialog& iWidget) {
    const std::string_view kind = iWidget.GetKind();
    for (const PeerKind& one : peerKinds)
        if (one.kind == kind)
            return one.make(iWidget);
    return nullptr;
}

QWidget* controlOf(const QorDialog* widget) {
    const WidgetPeer* peer = WidgetPeer::of(widget);
    return peer != nullptr ? peer->control() : nullptr;
}

} // namespace qor::desktop
