#pragma once

#include <string>
#include <string_view>

/// Name of an event, interned: two are equal when their texts are, and compare in one step.
/// The empty name names no event. Names live until the program ends.
/// Thread-safe.
class QorEventName {
public:
    QorEventName() : QorEventName(std::string_view()) {}

    QorEventName(std::string_view iText); // NOLINT(google-explicit-constructor)

    QorEventName(const char* iText) : QorEventName(std::string_view(iText)) {} // NOLINT

    QorEventName(const std::string& iText) : QorEventName(std::string_view(iText)) {} // NOLINT

    [[nodiscard]] const std::string& GetText() const { return *text; }

    [[nodiscard]] bool IsEmpty() const { return text->empty(); }

    bool operator==(const QorEventName& iOther) const { return text == iOther.text; }

private:
    const std::string* text;
};
