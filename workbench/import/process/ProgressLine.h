#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qor::import {

enum class ProgressKind : std::uint8_t { Progress, Warning, Done, Error };

/// Whose fault an error is; the names on the line are "input", "machine" and "internal".
enum class ErrorKind : std::uint8_t { Input, Machine, Internal };

/// What one line on the standard output of qorimport says. A line is one JSON object whose member
/// "event" names the kind; members that a kind does not use are absent.
struct ProgressLine {
    ProgressKind kind = ProgressKind::Progress;
    std::string stage;   ///< Progress: "read", "transfer", "mesh", "textures" or "write"
    double fraction = 0; ///< Progress: of the whole import, 0 to 1, never falling
    std::string text;    ///< Warning, Error: one sentence that names the file
    ErrorKind error = ErrorKind::Internal; ///< Error
    std::uint64_t nodes = 0;               ///< Done: occurrences in the tree
    std::uint64_t parts = 0;               ///< Done: distinct parts with a shape
    std::uint64_t triangles = 0;           ///< Done: with every instance counted
    double librarySeconds = 0;             ///< Done: inside Open CASCADE or Assimp
    double totalSeconds = 0;               ///< Done

    bool operator==(const ProgressLine&) const = default;
};

/// Lines longer than this are refused; a child that never ends its line cannot fill the workbench's
/// memory.
inline constexpr std::size_t longestProgressLine = 65536;

/// The line, without its line end. Text that is not UTF-8 is mended.
[[nodiscard]] std::string formatProgressLine(const ProgressLine& line);

/// Reads one line; nothing if it is no progress line. Any bytes are safe. Fractions are clamped to
/// 0..1.
[[nodiscard]] std::optional<ProgressLine> parseProgressLine(std::string_view text);

/// Cuts a stream of bytes into lines and parses them.
class ProgressParser {
public:
    /// Adds \p bytes; \p take is called for every good line, in order. Bad lines are counted and
    /// dropped.
    template <typename Take>
    void feed(std::string_view bytes, const Take& take) {
        for (const char byte : bytes)
            if (const auto line = feedByte(byte))
                take(*line);
    }

    [[nodiscard]] std::uint64_t badLines() const { return badLines_; }

private:
    std::optional<ProgressLine> feedByte(char byte);

    std::string pending_;
    bool tooLong_ = false;
    std::uint64_t badLines_ = 0;
};

} // namespace qor::import
