#include "workbench/imaging/SrgbProfile.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <vector>

namespace qor::imaging {

namespace {

using namespace std::string_view_literals;

class Bytes {
public:
    void number32(std::uint32_t value) {
        for (int shift = 24; shift >= 0; shift -= 8)
            text_.push_back(static_cast<char>(value >> shift & 0xFFU));
    }

    void number16(std::uint32_t value) {
        text_.push_back(static_cast<char>(value >> 8U & 0xFFU));
        text_.push_back(static_cast<char>(value & 0xFFU));
    }

    /// A signed number with 16 bits behind the point.
    void fixed(double value) {
        number32(static_cast<std::uint32_t>(static_cast<std::int32_t>(std::lround(value * 65536))));
    }

    void text(std::string_view text) { text_.append(text); }

    void zeros(std::size_t count) { text_.append(count, '\0'); }

    void pad() { zeros((4 - text_.size() % 4) % 4); }

    const std::string& str() const { return text_; }

private:
    std::string text_;
};

std::string description(std::string_view name) {
    constexpr std::size_t otherScripts = 4 + 4 + 2 + 1 + 67; // no Unicode and no Macintosh name
    Bytes bytes;
    bytes.text("desc\0\0\0\0"sv);
    bytes.number32(static_cast<std::uint32_t>(name.size() + 1));
    bytes.text(name);
    bytes.zeros(1 + otherScripts);
    return bytes.str();
}

std::string plainText(std::string_view text) {
    Bytes bytes;
    bytes.text("text\0\0\0\0"sv);
    bytes.text(text);
    bytes.zeros(1);
    return bytes.str();
}

std::string color(const std::array<double, 3>& xyz) {
    Bytes bytes;
    bytes.text("XYZ \0\0\0\0"sv);
    for (const double value : xyz)
        bytes.fixed(value);
    return bytes.str();
}

double linearFromSrgb(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

std::string curve() {
    constexpr int entries = 1024;
    Bytes bytes;
    bytes.text("curv\0\0\0\0"sv);
    bytes.number32(entries);
    for (int i = 0; i < entries; ++i)
        bytes.number16(static_cast<std::uint32_t>(
            std::lround(65535 * linearFromSrgb(static_cast<double>(i) / (entries - 1)))));
    return bytes.str();
}

struct Tag {
    std::string_view name;
    std::string content;
};

// D50, the profile's white, and the primaries of ITU-R BT.709 brought to it by the Bradford method
// (Lindbloom 2003).
constexpr std::array<double, 3> white{0.9642, 1.0, 0.8249};
constexpr std::array<double, 3> red{0.4360747, 0.2225045, 0.0139322};
constexpr std::array<double, 3> green{0.3850649, 0.7168786, 0.0971045};
constexpr std::array<double, 3> blue{0.1430804, 0.0606169, 0.7141733};

std::vector<Tag> makeTags() {
    return {{"desc", description("sRGB")},
            {"cprt", plainText("No copyright, use freely")},
            {"wtpt", color(white)},
            {"rXYZ", color(red)},
            {"gXYZ", color(green)},
            {"bXYZ", color(blue)},
            {"rTRC", curve()},
            {"gTRC", curve()},
            {"bTRC", curve()}};
}

std::string header(std::size_t size) {
    constexpr std::size_t reserved = 44;
    Bytes bytes;
    bytes.number32(static_cast<std::uint32_t>(size));
    bytes.zeros(4);               // any colour engine
    bytes.number32(0x02400000);   // version 2.4
    bytes.text("mntrRGB XYZ "sv); // of a screen
    for (const int part :
         {2024, 1, 1, 0, 0, 0}) // a date that does not change, so that files do not either
        bytes.number16(static_cast<std::uint32_t>(part));
    bytes.text("acsp"sv);
    bytes.zeros(24); // platform, flags, maker, model, attributes
    bytes.zeros(4);  // perceptual
    for (const double value : white)
        bytes.fixed(value);
    bytes.zeros(4 + reserved);
    return bytes.str();
}

} // namespace

std::string makeSrgbProfile() {
    constexpr std::size_t headerSize = 128;
    const std::vector<Tag> tags = makeTags();
    const std::size_t bodyAt = headerSize + 4 + tags.size() * 12;
    Bytes table;
    Bytes body;
    table.number32(static_cast<std::uint32_t>(tags.size()));
    for (const Tag& tag : tags) {
        table.text(tag.name);
        table.number32(static_cast<std::uint32_t>(bodyAt + body.str().size()));
        table.number32(static_cast<std::uint32_t>(tag.content.size()));
        body.text(tag.content);
        body.pad();
    }
    return header(bodyAt + body.str().size()) + table.str() + body.str();
}

} // namespace qor::imaging
