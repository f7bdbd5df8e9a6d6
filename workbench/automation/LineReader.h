#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qor::automation {

/// Cuts a stream of bytes into lines of at most a given length. Of a longer line nothing is kept:
/// it is reported once, as soon as it is too long, and skipped up to its end.
class LineReader {
public:
    /// Longest line in bytes, its end not counted.
    explicit LineReader(std::size_t limit) : limit_(limit) {}

    struct Line {
        std::string text; ///< without the line end
        bool isTooLong = false;
    };

    void add(std::string_view bytes);

    /// No more bytes will come: what is left counts as a line.
    void finish();

    /// The next line, or nothing until more bytes are added. Lines of blanks are left out.
    [[nodiscard]] std::optional<Line> next();

private:
    std::optional<Line> cut(std::size_t end);
    void forget(std::size_t count);

    std::size_t limit_;
    std::string buffer_;
    std::size_t begin_ = 0;    ///< of the line to come, in the buffer
    std::size_t searched_ = 0; ///< up to here there is no line end
    bool skipping_ = false;    ///< the rest of a line that was too long
};

} // namespace qor::automation
