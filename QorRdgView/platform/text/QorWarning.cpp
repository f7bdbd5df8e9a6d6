#include "platform/text/QorWarning.h"

#include <cstdio>
#include <mutex>
#include <string>
#include <utility>

namespace {

struct Channel {
    std::mutex mutex;
    QorWarningReceiver receiver;
};

/// Lives until the very end, for destructors may warn.
Channel& TheChannel() {
    static auto* channel = new Channel;
    return *channel;
}

} // namespace

void QorWarn(std::string_view iText) {
    Channel& channel = TheChannel();
    const std::scoped_lock lock(channel.mutex);
    if (channel.receiver) {
        channel.receiver(iText);
        return;
    }
    const std::string line = "qor: warning: " + std::string(iText) + "\n";
    std::fputs(line.c_str(), stderr);
}

QorWarningReceiver QorSetWarningReceiver(QorWarningReceiver iReceiver) {
    Channel& channel = TheChannel();
    const std::scoped_lock lock(channel.mutex);
    return std::exchange(channel.receiver, std::move(iReceiver));
}
