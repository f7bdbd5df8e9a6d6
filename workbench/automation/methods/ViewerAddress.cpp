#include "workbench/automation/methods/ViewerAddress.h"

#include "platform/dialog/QorDlgDialog.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/vis/QorViewer.h"
#include "workbench/automation/Address.h"
#include "workbench/automation/Error.h"

#include <algorithm>

namespace qor::automation {

namespace {

constexpr const char* mainName = "main";

std::string pathInWindow(const QorFrmLayout& layout, const QorFrmWindow& window) {
    const QorViewer& viewer = *window.GetViewer();
    if (&window == layout.GetCurrentWindow() && viewer.GetMain3DViewpoint() != nullptr)
        return mainName;
    return window.GetName().Str() + "/" + viewer.GetName().Str();
}

std::vector<NamedViewer> viewersOfWindows() {
    std::vector<NamedViewer> viewers;
    const QorFrmLayout* layout = QorFrmLayout::GetCurrentLayout();
    if (layout == nullptr)
        return viewers;
    for (const QorFrmWindow* window : layout->GetWindows())
        if (window->GetViewer() != nullptr && !window->GetViewer()->IsDying())
            viewers.push_back({pathInWindow(*layout, *window), window->GetViewer()});
    return viewers;
}

void addViewersIn(const QorDialog& widget, const std::string& path, std::vector<NamedViewer>& all) {
    for (QorDialog* child : widget.GetWidgets()) {
        if (child->IsDying())
            continue;
        const std::string childPath = path + "/" + child->GetName().Str();
        if (auto* viewer = dynamic_cast<QorViewer*>(child))
            all.push_back({childPath, viewer});
        addViewersIn(*child, childPath, all);
    }
}

} // namespace

std::vector<NamedViewer> listViewers() {
    std::vector<NamedViewer> viewers = viewersOfWindows();
    for (const QorDlgDialog* dialog : listDialogs())
        addViewersIn(*dialog, dialog->GetName().Str(), viewers);
    return viewers;
}

NamedViewer findViewer(const std::string& address) {
    const std::vector<NamedViewer> inWindows = viewersOfWindows();
    const auto isNamed = [&](const NamedViewer& one) {
        return one.path == address;
    };
    const auto found = std::find_if(inWindows.begin(), inWindows.end(), isNamed);
    if (found != inWindows.end()) {
        if (std::count_if(inWindows.begin(), inWindows.end(), isNamed) > 1)
            throw Error(ErrorCode::ambiguousName,
                        inQuotes(address) + " stands for several document windows");
        return *found;
    }
    if (address == mainName)
        throw Error(ErrorCode::noSuchObject, "there is no document window with a 3D viewer");
    QorDialog& widget = findWidget(address);
    auto* viewer = dynamic_cast<QorViewer*>(&widget);
    if (viewer == nullptr)
        throw Error(ErrorCode::wrongKind, inQuotes(address) + " is no viewer");
    return {address, viewer};
}

} // namespace qor::automation
