#include "workbench/automation/LineReader.h"

namespace qor::automation {

void LineReader::add(std::string_view bytes) {
    buffer_.erase(0, begin_);
    searched_ -= begin_;
    begin_ = 0;
    buffer_.append(bytes);
}

void LineReader::finish() {
    add("\n");
}

void LineReader::forget(std::size_t count) {
    begin_ += count;
    searched_ = begin_;
}

std::optional<LineReader::Line> LineReader::cut(std::size_t end) {
    const std::string_view text = std::string_view(buffer_).substr(begin_, end - begin_);
    const bool isBlank = text.find_first_not_of(" \t\r") == std::string_view::npos;
    std::optional<Line> line;
    if (!skipping_ && text.size() > limit_)
        line = Line{.text = {}, .isTooLong = true};
    else if (!skipping_ && !isBlank)
        line = Line{.text = std::string(text)};
    skipping_ = false;
    forget(end + 1 - begin_);
    return line;
}

std::optional<LineReader::Line> LineReader::next() {
    for (;;) {
        const std::size_t end = buffer_.find('\n', searched_);
        if (end == std::string::npos)
            break;
        if (std::optional<Line> line = cut(end))
            return line;
    }
    searched_ = buffer_.size();
    const bool tooLong = buffer_.size() - begin_ > limit_;
    if (!tooLong && !skipping_)
        return std::nullopt;
    forget(buffer_.size() - begin_);
    if (skipping_)
        return std::nullopt;
    skipping_ = true;
    return Line{.text = {}, .isTooLong = true};
}

} // namespace qor::automation
