#pragma once

#include <atomic>
#include <string>
#include <vector>

/// The trace channel: silent unless somebody listens. A line has a level; a listener hears those of
/// its level and below: 1 errors, 2 constructors, destructors and singletons, 3 OK and Cancel of
/// child dialogs, 4 everything else, 5 and 6 what is very frequent. Thread-safe.
class QorTraceChannel {
public:
    /// Whether anybody hears \p iLevel. One load.
    [[nodiscard]] static bool IsActive(int iLevel) {
        return iLevel <= loudest.load(std::memory_order_relaxed);
    }

    /// Writes lines of \p iLevel and below to standard error, exactly as given; 0 ends that.
    static void SetStandardErrorLevel(int iLevel);

    /// Keeps lines of \p iLevel and below, the latest 100,000 of them; forgets those kept before.
    static void StartRecording(int iLevel);
    /// Keeps no more; what is kept can still be taken.
    static void StopRecording();
    /// Hands over the lines kept, oldest first and exactly as given, line ends included.
    [[nodiscard]] static std::vector<std::string> TakeRecorded();

    /// Passes \p iLine to whoever listens; QorTrace is the usual way.
    static void Write(int iLevel, std::string iLine);

private:
    friend void QorTraceFormatted(int iLevel, const char* iFormat, ...);
    static std::atomic<int> loudest; ///< 0 while nobody listens
};

/// Formats a line as printf does, without regard to the locale, and writes it. For QorTrace.
[[gnu::format(printf, 2, 3)]] void QorTraceFormatted(int iLevel, const char* iFormat, ...);

/// An object as its "%x" in a trace line.
[[nodiscard]] unsigned QorTraceId(const void* iObject);

/// Traces a line: QorTrace(4, "(QorRdgOutputDialog::UpdateDisplay) iForce=%d\n", iForce). The
/// arguments are evaluated only when somebody hears that level.
#define QorTrace(iLevel, ...)                                                                      \
    do {                                                                                           \
        if (QorTraceChannel::IsActive(iLevel))                                                     \
            QorTraceFormatted(iLevel, __VA_ARGS__);                                                \
    } while (false)
