#pragma once

#include <string>
#include <string_view>

/// A printf format of exactly one number ("%4.0f", "%d mm"), checked once and then used without
/// regard to the locale. The text around the conversion is kept; "%%" is a percent sign. Allowed
/// are the conversions d i u o x X f F e E g G, the flags "-+ #0", a width and a precision of at
/// most 200, and length modifiers, which mean nothing here. Everything else ("%s", "%n", "*", two
/// conversions, none, a stray "%") is refused.
class QorNumberFormat {
public:
    /// A format that is refused leaves an object that is not valid and formats as "%g" does.
    explicit QorNumberFormat(std::string_view iFormat);

    [[nodiscard]] bool IsValid() const { return valid; }

    /// Whether the conversion is one of integers; a number given to it is cut towards zero first,
    /// and held within the range of 64 bits. A number that is not finite is then 0.
    [[nodiscard]] bool IsInteger() const { return integer; }

    [[nodiscard]] std::string Format(double iNumber) const;
    [[nodiscard]] std::string Format(int iNumber) const;

private:
    bool valid = false;
    bool integer = false;
    bool isUnsigned = false;
    std::string before;     ///< literal text in front of the conversion
    std::string conversion; ///< the conversion alone, with the length modifier that Format needs
    std::string after;
};
