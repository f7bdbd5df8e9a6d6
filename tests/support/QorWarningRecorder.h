#pragma once

#include "platform/text/QorWarning.h"

#include <mutex>
#include <string>
#include <vector>

/// While it lives, warnings come here instead of to standard error.
class QorWarningRecorder {
public:
    QorWarningRecorder()
        : before(QorSetWarningReceiver([this](std::string_view iText) { Add(iText); })) {}

    ~QorWarningRecorder() { QorSetWarningReceiver(before); }

    QorWarningRecorder(const QorWarningRecorder&) = delete;
    QorWarningRecorder& operator=(const QorWarningRecorder&) = delete;

    /// Those since the last call.
    [[nodiscard]] std::vector<std::string> Take() {
        const std::scoped_lock lock(mutex);
        std::vector<std::string> taken;
        taken.swap(warnings);
        return taken;
    }

private:
    void Add(std::string_view iText) {
        const std::scoped_lock lock(mutex);
        warnings.emplace_back(iText);
    }

    std::mutex mutex;
    std::vector<std::string> warnings;
    QorWarningReceiver before;
};
