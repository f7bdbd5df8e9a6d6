#include "platform/component/QorEventName.h"

#include <set>

QorEventName::QorEventName(std::string_view iText) {
    static std::set<std::string, std::less<>> names;
    auto found = names.find(iText);
    if (found == names.end())
        found = names.emplace(iText).first;
    text = &*found;
}
