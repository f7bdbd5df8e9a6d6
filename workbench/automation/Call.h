#pragma once

#include "workbench/automation/Error.h"
#include "workbench/automation/Exchange.h"
#include "workbench/automation/Json.h"

#include <string>

class QorDlgNotify;

namespace qor::automation {

/// A request as its handler sees it. The parameters have been checked against the method's table;
/// reading one that was left out without asking has() first is a mistake of the handler.
class Call {
public:
    Call(Dispatcher& dispatcher, ExchangePtr exchange)
        : dispatcher_(dispatcher), exchange_(std::move(exchange)) {}

    [[nodiscard]] const Json& params() const { return exchange_->request.params; }

    [[nodiscard]] bool has(const char* name) const { return params().contains(name); }

    [[nodiscard]] const Json& value(const char* name) const { return params().at(name); }

    [[nodiscard]] std::string text(const char* name) const {
        return value(name).get<std::string>();
    }

    [[nodiscard]] double number(const char* name) const { return value(name).get<double>(); }

    [[nodiscard]] int integer(const char* name) const {
        return static_cast<int>(value(name).get<double>());
    }

    [[nodiscard]] bool flag(const char* name) const { return value(name).get<bool>(); }

    /// Leaves the answer to somebody else; what the handler returns is not used. Further requests
    /// are handled meanwhile. When a notification box has stopped the handler before, and so
    /// answered the request, the answer goes to the notify.answer that let it go on.
    [[nodiscard]] Answer answerLater();
    /// The same, but no further request is handled until it is given, or a notification box opens.
    [[nodiscard]] Answer answerLaterAlone();
    /// Answers `{}` when the work that was stopped by \p box, which was just answered, has run, or
    /// with the next box that it opens.
    void answerWhenUnblocked(const QorDlgNotify& box);
    /// Runs \p work right after the answer was sent.
    void afterAnswer(std::function<void()> work);

private:
    Dispatcher& dispatcher_;
    ExchangePtr exchange_;
};

} // namespace qor::automation
