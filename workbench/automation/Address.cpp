#include "workbench/automation/Address.h"

#include "platform/dialog/QorDlgDialog.h"
#include "platform/frame/QorApplicationFrame.h"
#include "workbench/automation/Error.h"

#include <algorithm>
#include <span>

namespace qor::automation {

namespace {

using Names = std::span<const std::string>;

/// A widget that an address fits.
struct Match {
    QorDialog* widget;
    bool isWhole;       ///< no name was left out between the dialog and the widget
    bool isWholeWindow; ///< none was left out in front of the dialog
};

using Matches = std::vector<Match>;

std::vector<std::string> split(std::string_view address) {
    std::vector<std::string> names;
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string_view::npos; begin = end + 1) {
        end = address.find('/', begin);
        names.emplace_back(address.substr(begin, end - begin));
    }
    return names;
}

/// Names of what a dialog belongs to, the outermost first.
std::vector<std::string> ownersOf(const QorDlgDialog& dialog) {
    std::vector<std::string> names;
    for (const QorCommand* owner = dialog.GetFather(); owner != nullptr; owner = owner->GetFather())
        if (owner != QorApplicationFrame::GetFrame())
            names.push_back(owner->GetName().Str());
    std::reverse(names.begin(), names.end());
    return names;
}

/// Whether \p some are names of \p all, in their order.
bool isPart(Names some, Names all) {
    auto next = some.begin();
    for (const std::string& name : all)
        if (next != some.end() && name == *next)
            ++next;
    return next == some.end();
}

void addMatch(Matches& matches, const Match& match) {
    const auto known = std::find_if(matches.begin(), matches.end(),
                                    [&](const Match& one) { return one.widget == match.widget; });
    if (known == matches.end()) {
        matches.push_back(match);
        return;
    }
    known->isWhole = known->isWhole || match.isWhole;
    known->isWholeWindow = known->isWholeWindow || match.isWholeWindow;
}

/// Adds what \p names lead to from \p start, whose own name they do not hold.
void findBelow(QorDialog& start, Names names, Match soFar, Matches& matches) {
    for (QorDialog* child : start.GetWidgets()) {
        if (child->IsDying())
            continue;
        if (child->GetName().Str() == names.front()) {
            if (names.size() == 1)
                addMatch(matches, {child, soFar.isWhole, soFar.isWholeWindow});
            else
                findBelow(*child, names.subspan(1), soFar, matches);
        }
        findBelow(*child, names, {nullptr, false, soFar.isWholeWindow}, matches);
    }
}

void findInDialog(QorDlgDialog& dialog, Names names, Matches& matches) {
    const std::vector<std::string> owners = ownersOf(dialog);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (dialog.GetName().Str() != names[i] || !isPart(names.first(i), owners))
            continue;
        const bool isWholeWindow = i == owners.size();
        if (i + 1 == names.size())
            addMatch(matches, {&dialog, true, isWholeWindow});
        else
            findBelow(dialog, names.subspan(i + 1), {nullptr, true, isWholeWindow}, matches);
    }
}

template <class Predicate>
void prefer(Matches& matches, Predicate isBetter) {
    if (std::any_of(matches.begin(), matches.end(), isBetter))
        std::erase_if(matches, [&](const Match& match) { return !isBetter(match); });
}

QorDialog& chooseFrom(Matches matches, std::string_view address, const char* what) {
    prefer(matches, [](const Match& match) { return match.isWhole && match.isWholeWindow; });
    prefer(matches, [](const Match& match) { return match.isWhole; });
    const std::string name = inQuotes(address);
    if (matches.empty())
        throw Error(ErrorCode::noSuchObject, std::string("there is no ") + what + " " + name);
    if (matches.size() > 1)
        throw Error(ErrorCode::ambiguousName, name + " stands for " +
                                                  std::to_string(matches.size()) +
                                                  " widgets; give more of the path");
    return *matches.front().widget;
}

Matches findAll(std::string_view address) {
    const std::vector<std::string> names = split(address);
    Matches matches;
    for (QorDlgDialog* dialog : listDialogs())
        findInDialog(*dialog, names, matches);
    return matches;
}

} // namespace

std::vector<QorDlgDialog*> listDialogs() {
    std::vector<QorDlgDialog*> dialogs = QorDlgDialog::GetAll();
    std::erase_if(dialogs, [](const QorDlgDialog* dialog) {
        return dialog->IsAKindOf(QorApplicationFrame::MetaObject());
    });
    return dialogs;
}

QorDialog& findWidget(std::string_view address) {
    return chooseFrom(findAll(address), address, "widget");
}

QorDlgDialog& findDialog(std::string_view address) {
    Matches matches = findAll(address);
    std::erase_if(matches, [](const Match& match) { return !match.widget->IsWindow(); });
    return static_cast<QorDlgDialog&>(chooseFrom(matches, address, "dialog"));
}

} // namespace qor::automation
