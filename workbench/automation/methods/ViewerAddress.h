#pragma once

#include <string>
#include <vector>

class QorViewer;

namespace qor::automation {

struct NamedViewer {
    std::string path;
    QorViewer* viewer;
};

/// All viewers with paths that find them: those of document windows, then those in dialogs. The
/// current window's 3D viewer is "main", others stand behind the names of their windows.
[[nodiscard]] std::vector<NamedViewer> listViewers();

/// The viewer that \p address names: "main", the name of a document window and that of its viewer,
/// or a widget's address. Throws Error (noSuchObject, ambiguousName, wrongKind for a widget that is
/// no viewer).
[[nodiscard]] NamedViewer findViewer(const std::string& address);

} // namespace qor::automation
