#pragma once

#include "workbench/automation/Method.h"

class QorEventLoop;

namespace qor::document {
class DocumentSession;
}

namespace qor::automation {

class Dispatcher;
class EventRecorder;
struct PortOptions;

// The methods that every port has; one function a group, named after what stands before the dot.

/// \p dispatcher and \p loop outlive the methods.
[[nodiscard]] MethodGroup
appMethods(QorEventLoop& loop, Dispatcher& dispatcher, const PortOptions& options);
[[nodiscard]] MethodGroup systemMethods();
[[nodiscard]] MethodGroup settingsMethods();
[[nodiscard]] MethodGroup commandMethods();
[[nodiscard]] MethodGroup dialogMethods();
[[nodiscard]] MethodGroup widgetMethods();
[[nodiscard]] MethodGroup notifyMethods();
[[nodiscard]] MethodGroup fileMethods();
[[nodiscard]] MethodGroup colorMethods();
[[nodiscard]] MethodGroup viewerMethods();
[[nodiscard]] MethodGroup manipulatorMethods();
/// Objects of the current document.
[[nodiscard]] MethodGroup objectMethods();
/// The editor's selection, and contextual menus.
[[nodiscard]] MethodGroup selectionMethods();
/// The end of renders, and viewers as displays of the engine. \p loop outlives the methods.
[[nodiscard]] MethodGroup renderMethods(QorEventLoop& loop);
[[nodiscard]] MethodGroup traceMethods();
/// \p events outlives the methods.
[[nodiscard]] MethodGroup eventMethods(EventRecorder& events);

/// Not added by the port itself: the program has the session, which outlives the methods.
[[nodiscard]] MethodGroup documentMethods(document::DocumentSession& session);

} // namespace qor::automation
