#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

/// What a setting can be: integers, floats (kept as the shortest decimal that gives the float back)
/// or a string.
using QorSettingValue = std::variant<std::vector<int>, std::vector<double>, std::string>;

/// The text form of a settings repository, and its settings in the order of the file.
///
/// The first line is "# QorWorkbench settings, version 1". A setting is a line `Key = 1`,
/// `Key = 0.2, 1.0, -1e-05` or `Key = "text"`; \" \\ \n \r \t are escapes. Numbers are written
/// without regard to the locale and such that they read back exactly; floats always have a point,
/// an exponent or letters ("inf", "nan"). Other lines that begin with "#" and empty lines are kept
/// as they are. In a file of a later version lines that are not understood are kept too.
class QorSettingFile {
public:
    /// Lines that were not understood in a file of this version or an earlier one.
    struct Damage {
        int count = 0;
        int firstLine = 0; ///< counted from 1
        std::string reason;
    };

    /// Replaces everything by what \p iText holds. Damaged lines are left out and counted.
    Damage Parse(std::string_view iText);

    /// The text to write.
    [[nodiscard]] std::string Print() const;

    [[nodiscard]] const QorSettingValue* Find(std::string_view iKey) const;
    /// Sets a setting in its place, or at the end; false when \p iKey cannot be a key.
    bool Set(std::string_view iKey, QorSettingValue iValue);

    [[nodiscard]] std::size_t CountSettings() const { return places.size(); }

    [[nodiscard]] static bool IsKey(std::string_view iKey);

private:
    struct Line {
        std::string text; ///< the key, or the whole line when it is no setting
        QorSettingValue value;
        bool isSetting = false;
    };

    struct Hash {
        using is_transparent = void;

        std::size_t operator()(std::string_view iText) const noexcept {
            return std::hash<std::string_view>()(iText);
        }
    };

    void ParseHeader(std::string_view& ioText);
    void ParseLine(std::string_view iLine, int iNumber, Damage& ioDamage);

    std::string laterHeader; ///< the first line of a file of a later version; else empty
    std::vector<Line> lines;
    std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> places;
};

/// The double of the shortest decimal that gives \p iValue back: 0.2F becomes
/// 0.2 and not 0.20000000298.
[[nodiscard]] double QorWidenFloat(float iValue);
