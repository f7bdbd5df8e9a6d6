#include "platform/dialog/QorDlgNotify.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/methods/Groups.h"
#include "workbench/automation/methods/UserAction.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace qor::automation {

namespace {

constexpr std::array kinds{
    std::pair{QorNotifyKind::Information, "information"},
    std::pair{QorNotifyKind::Question, "question"},
    std::pair{QorNotifyKind::Warning, "warning"},
    std::pair{QorNotifyKind::Error, "error"},
};

/// A word for a button, and the value that it stands for. "yes" and "ok" are the same answer, on
/// different boxes.
struct Word {
    std::string_view text;
    QorNotifyAnswer answer;
    bool isForOK;    ///< on boxes with OK
    bool isForYesNo; ///< on boxes with Yes and No
};

constexpr std::array words{
    Word{"yes", QorNotifyConfirm, false, true},
    Word{"no", QorNotifyNo, false, true},
    Word{"ok", QorNotifyConfirm, true, false},
    Word{"cancel", QorNotifyCancel, true, true},
};

bool hasYesNo(const QorDlgNotify& box) {
    return box.GetButtons() == QorNotifyButtons::YesNo ||
           box.GetButtons() == QorNotifyButtons::YesNoCancel;
}

Json getOpenBox(Call& /*call*/) {
    const QorDlgNotify* box = QorDlgNotify::GetOpen();
    if (box == nullptr)
        return {};
    const auto kind = std::find_if(kinds.begin(), kinds.end(), [&](const auto& one) {
        return one.first == box->GetNotifyKind();
    });
    return {{"name", box->GetName().Str()},
            {"kind", kind->second},
            {"title", box->GetTitle().Str()},
            {"text", box->GetText().Str()}};
}

QorNotifyAnswer findAnswer(const QorDlgNotify& box, const std::string& text) {
    for (const Word& word : words)
        if (word.text == text && (hasYesNo(box) ? word.isForYesNo : word.isForOK) &&
            box.Offers(word.answer))
            return word.answer;
    throw Error(ErrorCode::invalidParams, "the notification box " + inQuotes(box.GetName().Str()) +
                                              " does not offer " + inQuotes(text));
}

Json answerOpenBox(Call& call) {
    QorDlgNotify* box = QorDlgNotify::GetOpen();
    if (box == nullptr)
        throw Error(ErrorCode::noSuchObject, "no notification box is open");
    const QorNotifyAnswer answer = findAnswer(*box, call.text("answer"));
    Json result = answerAction(box->UserAnswer(answer), box->GetName().Str());
    call.answerWhenUnblocked(*box);
    return result;
}

} // namespace

MethodGroup notifyMethods() {
    return {
        {.name = "notify.get", .params = {}, .run = &getOpenBox, .isForBlocked = true},
        {.name = "notify.answer",
         .params = {{"answer", ParamKind::text}},
         .run = &answerOpenBox,
         .isForBlocked = true},
    };
}

} // namespace qor::automation
