#include "platform/component/QorEventName.h"

#include <mutex>
#include <set>

QorEventName::QorEventName(std::string_view iText) {
    static auto* mutex = new std::mutex; // classes may be used first by any thread
    static auto* names = new std::set<std::string, std::less<>>; // in use until the very end
    const std::scoped_lock lock(*mutex);
    auto found = names->find(iText);
    if (found == names->end())
        found = names->emplace(iText).first;
    text = &*found;
}
