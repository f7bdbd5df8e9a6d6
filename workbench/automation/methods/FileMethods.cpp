#include "platform/dialog/QorDlgFile.h"
#include "workbench/automation/Address.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/methods/Groups.h"
#include "workbench/automation/methods/UserAction.h"

namespace qor::automation {

namespace {

QorDlgFile& findFileDialog(const std::string& name) {
    QorDlgDialog& dialog = findDialog(name);
    if (auto* file = dynamic_cast<QorDlgFile*>(&dialog))
        return *file;
    throw Error(ErrorCode::wrongKind, inQuotes(name) + " is no file dialog");
}

Json getFile(Call& call) {
    const QorDlgFile& dialog = findFileDialog(call.text("dialog"));
    Json filters = Json::array();
    for (const QorDlgFile::Filter& filter : dialog.GetFilters())
        filters.push_back({{"label", filter.label.Str()}, {"pattern", filter.pattern.Str()}});
    Json extensions = Json::array();
    if (const auto* standard = dynamic_cast<const QorDlgStdFile*>(&dialog))
        for (const QorString& extension : standard->GetExtensions())
            extensions.push_back(extension.Str());
    return {{"title", dialog.GetTitle().Str()},    {"save", dialog.IsSave()},
            {"filters", std::move(filters)},       {"filter", dialog.GetActiveFilterIndex()},
            {"extensions", std::move(extensions)}, {"directory", dialog.GetDirectory().Str()}};
}

/// The filter first: it is the only part that can be refused, and nothing is half done then.
Json acceptFile(Call& call) {
    const std::string name = call.text("dialog");
    QorDlgFile& dialog = findFileDialog(name);
    if (call.has("filter"))
        answerAction(dialog.UserSetFilter(call.integer("filter")), name);
    if (call.has("directory"))
        answerAction(dialog.UserSetDirectory(call.text("directory")), name);
    return answerAction(call.has("path") ? dialog.UserAccept(call.text("path")) : dialog.UserOK(),
                        name);
}

Json cancelFile(Call& call) {
    const std::string name = call.text("dialog");
    return answerAction(findFileDialog(name).UserCancel(), name);
}

} // namespace

MethodGroup fileMethods() {
    const Param dialog{"dialog", ParamKind::text};
    return {
        {.name = "file.get", .params = {dialog}, .run = &getFile},
        {.name = "file.accept",
         .params = {dialog, optional("path", ParamKind::text),
                    optional("directory", ParamKind::text), optional("filter", ParamKind::integer)},
         .run = &acceptFile},
        {.name = "file.cancel", .params = {dialog}, .run = &cancelFile},
    };
}

} // namespace qor::automation
