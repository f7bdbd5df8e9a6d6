#include "platform/component/QorEventName.h"

#include <set>

QorEventName::QorEventName(std::string_view iText) {
    static auto* names = new std::set<std::string, std::less<>>; // in use until the very end
    auto found = names->find(iText);
    if (found == names->end())
        found = names->emplace(iText).first;
    text = &*found;
}
