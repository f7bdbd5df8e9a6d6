#include "workbench/app/FileDialogs.h"

#include "platform/frame/QorFrmFile.h"
#include "platform/frame/QorFrmNotify.h"
#include "platform/text/QorMsgCatalog.h"
#include "workbench/document/session/RecentFiles.h"
#include "workbench/session/Settings.h"

#include <unistd.h>

#include <iterator>
#include <utility>
#include <vector>

namespace qor::app {

namespace fs = std::filesystem;

namespace {

constexpr const char* documentSuffix = ".qor";

struct QuestionRow {
    FileQuestion question;
    const char* dialog;    ///< its name
    const char* folderKey; ///< in the settings
    QorDlgStyle style;
};

constexpr QuestionRow questionRows[] = {
    {FileQuestion::Open, "openFile", "FolderToOpen", QorDlgDefaultStyle},
    {FileQuestion::Import, "importFile", "FolderToOpen", QorDlgDefaultStyle},
    {FileQuestion::Save, "saveFile", "FolderToSave", QorDlgFileSave},
};

/// A kind of file that can be read. Suffixes are written both ways, for names come from all
/// systems.
struct FilterRow {
    const char* label; ///< in the catalog
    const char* pattern;
};

constexpr FilterRow filterRows[] = {
    {"Documents", "*.qor"},
    {"Step", "*.stp *.step *.p21 *.STP *.STEP"},
    {"Iges", "*.igs *.iges *.IGS *.IGES"},
    {"Brep", "*.brep *.brp *.BREP"},
    {"Gltf", "*.glb *.gltf *.GLB"},
    {"Obj", "*.obj *.OBJ"},
    {"Stl", "*.stl *.STL"},
    {"Ply", "*.ply *.PLY"},
};

QorUnicodeString message(const char* key, const QorMsgParameters& parameters = {}) {
    return QorMsgCatalog::BuildMessage("FileDialogs", key, parameters);
}

void setFilters(QorDlgFile& dialog, bool documentsAlone) {
    std::vector<QorUnicodeString> labels;
    std::vector<QorString> patterns;
    if (!documentsAlone) {
        std::string all;
        for (const FilterRow& row : filterRows)
            all += (all.empty() ? "" : " ") + std::string(row.pattern);
        labels.push_back(message("AllReadable"));
        patterns.emplace_back(all);
    }
    for (const FilterRow& row : filterRows) {
        labels.push_back(message(row.label));
        patterns.emplace_back(row.pattern);
        if (documentsAlone)
            break;
    }
    if (!documentsAlone) {
        labels.push_back(message("AllFiles"));
        patterns.emplace_back("*");
    }
    dialog.SetFilterStrings(labels.data(), patterns.data(), static_cast<int>(labels.size()));
}

/// Where a person went last for the same; else where the file lies that was opened last, unless
/// nothing can be saved there.
fs::path folderFor(const QuestionRow& row) {
    std::error_code ignored;
    const fs::path last = session::setting(row.folderKey);
    if (!last.empty() && fs::is_directory(last, ignored))
        return last;
    const auto recent = document::RecentFiles::list();
    const fs::path beside = recent.empty() ? fs::path() : recent.front().parent_path();
    const bool saves = (row.style & QorDlgFileSave) != 0;
    return access(beside.c_str(), saves ? W_OK : R_OK) == 0 ? beside : fs::path();
}

/// A file dialog that answers once and goes.
class Asking : public QorFrmFile {
    QorDeclareClass(Asking)

    Asking(QorCommand* owner,
           const QuestionRow& row,
           std::function<void(std::optional<fs::path>)> answer)
        : QorFrmFile(owner, row.dialog, row.style), row_(row), answer_(std::move(answer)) {
        AddAnalyseNotificationCB(this, this, GetFileSelectionOKNotification(), &Asking::okCB);
        AddAnalyseNotificationCB(this, this, GetFileSelectionCancelNotification(),
                                 &Asking::cancelCB);
        SetTitle(message(row.dialog));
        setFilters(*this, IsSave());
        if (const fs::path folder = folderFor(row); !folder.empty())
            SetDirectory(folder.string());
    }

    /// A question that nobody will answer any more is answered with nothing.
    void replace(std::function<void(std::optional<fs::path>)> answer) {
        const auto before = std::exchange(answer_, std::move(answer));
        if (before)
            before(std::nullopt);
    }

protected:
    ~Asking() override = default;

    void Dying() override { replace({}); }

private:
    void okCB(QorCommand* /*sender*/, QorNotification* /*what*/, QorSubscriberData /*data*/) {
        fs::path file = GetSelection().Str();
        if (IsSave() && file.extension().empty())
            file += documentSuffix;
        if (IsSave() && !mayOverwrite(file))
            return;
        session::keepSetting(row_.folderKey, file.parent_path().string());
        end(file);
    }

    void cancelCB(QorCommand* /*sender*/, QorNotification* /*what*/, QorSubscriberData /*data*/) {
        end(std::nullopt);
    }

    [[nodiscard]] bool mayOverwrite(const fs::path& file) {
        std::error_code ignored;
        if (!fs::exists(file, ignored))
            return true;
        const QorVar<Asking> alive(this);
        auto* box = new QorFrmNotify(this, "overwriteNotify", QorNotifyKind::Question,
                                     QorNotifyButtons::YesNo);
        const int answer = box->DisplayBlocked(message("AskOverwrite", {file.filename().string()}),
                                               message("AskOverwriteTitle"));
        box->RequestDelayedDestruction();
        return answer == QorNotifyConfirm && !IsDying();
    }

    void end(const std::optional<fs::path>& file) {
        const auto answer = std::exchange(answer_, {});
        SetVisibility(QorDlgHIDE);
        RequestDelayedDestruction();
        if (answer)
            answer(file);
    }

    const QuestionRow& row_;
    std::function<void(std::optional<fs::path>)> answer_;
};

QorImplementClass(Asking, QorFrmFile)

const QuestionRow& rowOf(FileQuestion question) {
    return questionRows[static_cast<std::size_t>(question)];
}

Asking* findOpen(const QorCommand& father, const char* name) {
    for (QorCommand* child : father.GetChildren())
        if (auto* dialog = dynamic_cast<Asking*>(child);
            dialog != nullptr && dialog->GetName() == name && !dialog->IsDying())
            return dialog;
    return nullptr;
}

} // namespace

void askFile(QorCommand& father,
             FileQuestion question,
             const fs::path& suggestion,
             std::function<void(std::optional<fs::path>)> answer) {
    const QuestionRow& row = rowOf(question);
    Asking* dialog = findOpen(father, row.dialog);
    if (dialog != nullptr)
        dialog->replace(std::move(answer));
    else
        dialog = new Asking(&father, row, std::move(answer));
    if (!suggestion.empty())
        dialog->SetSelection(suggestion.string());
    dialog->SetVisibility(QorDlgSHOW);
}

} // namespace qor::app
