#include "platform/vis/QorContentId.h"

#include <atomic>

std::uint64_t QorNewContentId() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}
