// viewer.*: what viewers show, and a person's mouse in them.
#include "platform/vis/QorNavigation3DViewer.h"
#include "platform/vis/QorPictureService.h"
#include "platform/vis/QorViewerPictureService.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/methods/Groups.h"
#include "workbench/automation/methods/RepReaders.h"
#include "workbench/automation/methods/ViewerAddress.h"
#include "workbench/automation/methods/ViewerArguments.h"
#include "workbench/automation/methods/ViewerReaders.h"

#include <algorithm>
#include <array>
#include <memory>

namespace qor::automation {

namespace {

using Projection = Qor3DViewpoint::Projection;
using Action = QorMouseEvent::Action;
using Button = QorMouseEvent::Button;

constexpr std::array<NamedValue<Projection>, 2> projections{
    {{"perspective", Projection::Perspective}, {"parallel", Projection::Parallel}}};

constexpr std::array<NamedValue<Action>, 5> actions{{{"press", Action::Press},
                                                     {"move", Action::Move},
                                                     {"release", Action::Release},
                                                     {"doubleClick", Action::DoubleClick},
                                                     {"wheel", Action::Wheel}}};

constexpr std::array<NamedValue<Button>, 3> buttons{
    {{"left", Button::Left}, {"middle", Button::Middle}, {"right", Button::Right}}};

/// The one mouse of the port: the button that it holds.
struct Mouse {
    Button held = Button::None;
};

Json listAll(Call& /*call*/) {
    Json list = Json::array();
    for (const NamedViewer& one : listViewers())
        list.push_back(readViewerBriefly(one));
    return list;
}

Json getViewer(Call& call) {
    return readViewer(findViewer(call.text("viewer")));
}

Json resize(Call& call) {
    const NamedViewer named = findViewer(call.text("viewer"));
    const int width = call.integer("width");
    const int height = call.integer("height");
    if (width < 1 || height < 1)
        throw Error(ErrorCode::invalidParams, "a viewer of " + std::to_string(width) + " by " +
                                                  std::to_string(height) + " pixels shows nothing");
    named.viewer->UserResizeViewer(static_cast<float>(width), static_cast<float>(height));
    return Json::object();
}

QorView changedView(Call& call, QorView view) {
    if (call.has("eye"))
        view.eye = vectorFrom(call, "eye");
    if (call.has("target"))
        view.target = vectorFrom(call, "target");
    if (call.has("up"))
        view.up = vectorFrom(call, "up");
    if (call.has("fieldOfView"))
        view.fieldOfView = call.number("fieldOfView");
    if (call.has("projection"))
        view.projection = valueNamed(projections, call, "projection");
    if (view.eye == view.target)
        throw Error(ErrorCode::invalidParams, "\"eye\" and \"target\" are the same point");
    if (view.up == QorMathVector{})
        throw Error(ErrorCode::invalidParams, "\"up\" is no direction");
    return view;
}

Json moveViewpoint(Call& call) {
    const NamedViewer named = findViewer(call.text("viewer"));
    const QorVar<QorViewer> alive(named.viewer);
    const QorVar<Qor3DViewpoint> viewpoint(named.viewer->GetMain3DViewpoint());
    if (!viewpoint)
        throw Error(ErrorCode::wrongKind, inQuotes(named.path) + " is no viewer of space");
    const QorView view = changedView(call, QorView::Of(*viewpoint));
    if (auto* navigation = dynamic_cast<QorNavigation3DViewer*>(named.viewer))
        navigation->StopViewChange();
    const bool ends = call.has("animated") && !call.flag("animated");
    if (call.has("animated") && !ends)
        viewpoint->SetAnimated(true);
    view.ApplyTo(*viewpoint);
    named.viewer->Draw();
    if (!viewpoint->IsAnimated())
        viewpoint->Modified();
    else if (ends)
        viewpoint->SetAnimated(false);
    return Json::object();
}

Json moveWindow(Call& call) {
    const NamedViewer named = findViewer(call.text("viewer"));
    auto* viewer = dynamic_cast<Qor2DViewer*>(named.viewer);
    if (viewer == nullptr)
        throw Error(ErrorCode::wrongKind, inQuotes(named.path) + " is no viewer of the plane");
    const auto [left, right, bottom, top] = numbersFrom<4>(call, "window");
    if (!(left < right) || !(bottom < top))
        throw Error(ErrorCode::invalidParams, "the window " + call.value("window").dump() +
                                                  " is empty; it is [left, right, bottom, top]");
    viewer->SetViewBox(left, right, bottom, top);
    return Json::object();
}

bool isInside(const QorViewer& viewer, const QorMathPoint2D& pixel) {
    float width = 0.0F;
    float height = 0.0F;
    viewer.GetGraphicSize(width, height);
    return pixel.x >= 0.0 && pixel.y >= 0.0 && pixel.x < static_cast<double>(width) &&
           pixel.y < static_cast<double>(height);
}

QorMouseEvent mouseEventFrom(Call& call, Mouse& mouse) {
    QorMouseEvent event;
    event.action = valueNamed(actions, call, "action");
    event.pixel = {call.number("x"), call.number("y")};
    event.shift = call.has("shift") && call.flag("shift");
    if (event.action == Action::Wheel) {
        event.wheelSteps = call.has("steps") ? call.number("steps") : 1.0;
        return event;
    }
    const bool presses = event.action == Action::Press || event.action == Action::DoubleClick;
    if (call.has("button"))
        event.button = valueNamed(buttons, call, "button");
    else if (presses || mouse.held == Button::None)
        event.button = event.action == Action::Move ? Button::None : Button::Left;
    else
        event.button = mouse.held;
    return event;
}

Json useMouse(Call& call, Mouse& mouse) {
    const NamedViewer named = findViewer(call.text("viewer"));
    const QorMouseEvent event = mouseEventFrom(call, mouse);
    if (!named.viewer->CanAct())
        throw Error(ErrorCode::cannotAct, inQuotes(named.path) + " is insensitive or hidden");
    const bool presses = event.action == Action::Press || event.action == Action::DoubleClick;
    if ((presses || event.action == Action::Wheel) && !isInside(*named.viewer, event.pixel))
        throw Error(ErrorCode::cannotAct,
                    "that pixel is not in " + inQuotes(named.path) + ", nor can it be pressed");
    if (presses)
        mouse.held = event.button;
    else if (event.action == Action::Release)
        mouse.held = Button::None;
    named.viewer->HandleMouse(event);
    return Json::object();
}

Json project(Call& call) {
    const NamedViewer named = findViewer(call.text("viewer"));
    float width = 0.0F;
    float height = 0.0F;
    named.viewer->GetGraphicSize(width, height);
    QorMathPoint2D pixel;
    if (const Qor3DViewpoint* solid = named.viewer->GetMain3DViewpoint()) {
        if (!solid->Project(vectorFrom(call, "point"), width, height, pixel))
            throw Error(ErrorCode::failed, "the point " + call.value("point").dump() +
                                               " lies behind the eye of " + inQuotes(named.path));
    } else if (const Qor2DViewpoint* flat = named.viewer->GetMain2DViewpoint()) {
        const auto [x, y] = numbersFrom<2>(call, "point");
        pixel = flat->ModelToPixel({x, y}, width, height,
                                   named.viewer->GetSupport()->GetMMInSupportUnit());
    }
    return {{"x", pixel.x}, {"y", pixel.y}};
}

Json split(Call& call) {
    const NamedViewer named = findViewer(call.text("viewer"));
    auto* viewer = dynamic_cast<Qor3DViewer*>(named.viewer);
    if (viewer == nullptr)
        throw Error(ErrorCode::wrongKind, inQuotes(named.path) + " is no viewer of space");
    const int count = call.integer("count");
    if (count < 1 || count > QorViewpointTiles::most)
        throw Error(ErrorCode::invalidParams, "a viewer has 1 to " +
                                                  std::to_string(QorViewpointTiles::most) +
                                                  " viewpoints, not " + std::to_string(count));
    viewer->SplitViewpoints(count);
    return Json::object();
}

Json writePicture(Call& call) {
    const NamedViewer named = findViewer(call.text("viewer"));
    const std::string path = call.text("path");
    if (path.empty())
        throw Error(ErrorCode::invalidParams, "\"path\" is empty");
    QorUnicodeString reason;
    const auto picture = QorAdopt(QorViewerPictureService::Get().Take(*named.viewer, reason));
    if (!picture)
        throw Error(ErrorCode::failed,
                    "there is no picture of " + inQuotes(named.path) + ": " + reason.Str());
    if (QorPictureService::Get().Write(*picture, "PNG", path, reason) != 0)
        throw Error(ErrorCode::failed, reason.Str());
    return Json::object();
}

} // namespace

MethodGroup viewerMethods() {
    const Param viewer{"viewer", ParamKind::text};
    const Param x{"x", ParamKind::number};
    const Param y{"y", ParamKind::number};
    return {
        {.name = "viewer.list", .params = {}, .run = &listAll},
        {.name = "viewer.get", .params = {viewer}, .run = &getViewer},
        {.name = "viewer.resize",
         .params = {viewer, {"width", ParamKind::integer}, {"height", ParamKind::integer}},
         .run = &resize},
        {.name = "viewer.viewpoint",
         .params = {viewer, optional("eye", ParamKind::numbers),
                    optional("target", ParamKind::numbers), optional("up", ParamKind::numbers),
                    optional("fieldOfView", ParamKind::number),
                    optional("projection", ParamKind::text),
                    optional("animated", ParamKind::boolean)},
         .run = &moveViewpoint},
        {.name = "viewer.window",
         .params = {viewer, {"window", ParamKind::numbers}},
         .run = &moveWindow},
        {.name = "viewer.mouse",
         .params = {viewer,
                    {"action", ParamKind::text},
                    x,
                    y,
                    optional("button", ParamKind::text),
                    optional("steps", ParamKind::number),
                    optional("shift", ParamKind::boolean)},
         .run =
             [mouse = std::make_shared<Mouse>()](Call& call) {
                 return useMouse(call, *mouse);
             }},
        {.name = "viewer.split", .params = {viewer, {"count", ParamKind::integer}}, .run = &split},
        {.name = "viewer.picture",
         .params = {viewer, {"path", ParamKind::text}},
         .run = &writePicture},
        {.name = "viewer.project",
         .params = {viewer, {"point", ParamKind::numbers}},
         .run = &project},
    };
}

} // namespace qor::automation
