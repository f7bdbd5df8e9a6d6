#include "platform/text/QorString.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/methods/Groups.h"
#include "workbench/document/session/DocumentSession.h"

#include <optional>

namespace qor::automation {

namespace {

using document::Document;
using document::Document_var;
using document::DocumentSession;
using document::Result;

/// Nodes of the product tree and objects of the scene.
std::size_t countObjects(const Document& document) {
    std::size_t count = document.product().nodes().size();
    for (const QorRscKind* kind : QorRscKind::GetAll())
        count += static_cast<std::size_t>(document.scene()->ListObjects(kind->name).Size());
    return count;
}

Json describe(const Document& document) {
    return {{"path", document.path().empty() ? Json() : Json(document.path().string())},
            {"objects", countObjects(document)}};
}

/// A call whose work may end at once or later.
struct Pending {
    std::optional<Result<Document_var>> outcome;
    std::optional<Answer> answer;
};

void answerWith(const Answer& answer, const Result<Document_var>& outcome) {
    if (outcome)
        answer.give(describe(*outcome.value()));
    else
        answer.fail(ErrorCode::failed, outcome.failure().text);
}

using Begin = std::function<void(const DocumentSession::Finished& finished)>;

/// Answers when the work that \p begin begins has ended; a box that it opens first answers with
/// that.
Json answerWhenDone(Call& call, const Begin& begin) {
    auto pending = std::make_shared<Pending>();
    begin([pending](const Result<Document_var>& outcome) {
        if (pending->answer)
            answerWith(*pending->answer, outcome);
        else
            pending->outcome = outcome;
    });
    if (!pending->outcome) {
        pending->answer = call.answerLater();
        return {};
    }
    if (!*pending->outcome)
        throw Error(ErrorCode::failed, pending->outcome->failure().text);
    return describe(*pending->outcome->value());
}

void expectDocument(const DocumentSession& session) {
    if (session.current() == nullptr)
        throw Error(ErrorCode::noSuchObject, "no document is open");
}

Json saveDocument(DocumentSession& session, Call& call) {
    expectDocument(session);
    if (!call.has("path") && session.current()->path().empty())
        throw Error(ErrorCode::invalidParams,
                    "the document was never saved: parameter \"path\" has to name its file");
    return answerWhenDone(call, [&](const auto& finished) {
        if (call.has("path"))
            session.saveAs(call.text("path"), finished);
        else
            session.save(finished);
    });
}

Json cancelWork(DocumentSession& session) {
    if (!session.cancel())
        throw Error(ErrorCode::cannotAct, "nothing is being opened, imported or saved");
    return Json::object();
}

} // namespace

MethodGroup documentMethods(DocumentSession& session) {
    const Param path{"path", ParamKind::text};
    return {
        {.name = "document.new",
         .params = {},
         .run =
             [&session](Call& call) {
                 return answerWhenDone(
                     call, [&](const auto& finished) { session.newDocument(finished); });
             }},
        {.name = "document.open",
         .params = {path},
         .run =
             [&session](Call& call) {
                 return answerWhenDone(call, [&](const auto& finished) {
                     session.open(call.text("path"), finished);
                 });
             }},
        {.name = "document.import",
         .params = {path},
         .run =
             [&session](Call& call) {
                 return answerWhenDone(call, [&](const auto& finished) {
                     session.importInto(call.text("path"), finished);
                 });
             }},
        {.name = "document.save",
         .params = {optional("path", ParamKind::text)},
         .run =
             [&session](Call& call) {
                 return saveDocument(session, call);
             }},
        {.name = "document.close",
         .params = {},
         .run =
             [&session](Call& call) {
                 expectDocument(session);
                 return answerWhenDone(call,
                                       [&](const auto& finished) { session.close(finished); });
             }},
        {.name = "document.cancel",
         .params = {},
         .run =
             [&session](Call& /*call*/) {
                 return cancelWork(session);
             }},
    };
}

} // namespace qor::automation
