// What stands in the files themselves.
#include "tests/imaging/ImagingTest.h"

namespace {

/// The tag of a little-endian TIFF file's first directory; 0 when it is not there.
std::uint32_t tiffTag(const std::string& bytes, std::uint32_t wanted) {
    const auto number = [&](std::size_t at, int size) {
        std::uint32_t value = 0;
        for (int i = 0; i < size; ++i)
            value |= std::uint32_t{static_cast<std::uint8_t>(bytes.at(at + i))} << (8 * i);
        return value;
    };
    const std::uint32_t directory = number(4, 4);
    for (std::uint32_t i = 0; i < number(directory, 2); ++i)
        if (number(directory + 2 + 12 * i, 2) == wanted)
            return number(directory + 2 + 12 * i + 8, 2);
    return 0;
}

class PictureBytes : public ImagingTest {};

/// Where a format says how colours are kept, and what it says of three channels of eight bits.
struct ColorField {
    const char* keyword;
    std::size_t offset;
    std::string_view opaque;
    std::string_view clear; ///< with alpha
};

TEST_F(PictureBytes, KeepChannelsOfEightBitsHoweverFewColoursThereAre) {
    using namespace std::string_view_literals;
    constexpr auto fields = std::to_array<ColorField>({
        {"PNG", 24, "\x08\x02"sv, "\x08\x06"sv},
        {"TGA", 16, "\x18"sv, "\x20"sv},
        {"TGA", 2, "\x02"sv, "\x02"sv},
        {"BMP", 28, "\x18\0"sv, "\x20\0"sv},
        {"RGB", 10, "\0\x03"sv, "\0\x04"sv},
        {"PSD", 22, "\0\x08\0\x03"sv, "\0\x08\0\x03"sv},
    });
    auto few = std::make_shared<Pixels>();
    for (int i = 0; i < 16 * 16; ++i)
        for (const int value : {i % 2 * 255, i % 2 * 255, i % 2 * 255, i % 3 == 0 ? 128 : 255})
            few->push_back(static_cast<std::uint8_t>(value));
    auto opaque = std::make_shared<Pixels>();
    for (std::size_t i = 0; i < few->size(); ++i)
        if (i % 4 != 3)
            opaque->push_back((*few)[i]);
    const auto clearPicture = QorMake<QorPixelImage>(16, 16, 4, few);
    const auto opaquePicture = QorMake<QorPixelImage>(16, 16, 3, opaque);
    for (const ColorField& field : fields) {
        write(*opaquePicture, field.keyword, "opaque");
        write(*clearPicture, field.keyword, "clear");
        EXPECT_EQ(directory.Read("opaque").substr(field.offset, field.opaque.size()), field.opaque)
            << field.keyword << " at " << field.offset;
        EXPECT_EQ(directory.Read("clear").substr(field.offset, field.clear.size()), field.clear)
            << field.keyword << " at " << field.offset;
    }
    constexpr std::uint32_t photometric = 262;
    constexpr std::uint32_t samples = 277;
    for (const char* keyword : {"TIFF", "TIFFPB"}) {
        write(*opaquePicture, keyword, "opaque");
        write(*clearPicture, keyword, "clear");
        EXPECT_EQ(tiffTag(directory.Read("opaque"), photometric), 2U);
        EXPECT_EQ(tiffTag(directory.Read("opaque"), samples), 3U);
        EXPECT_EQ(tiffTag(directory.Read("clear"), samples), 4U);
    }
}

TEST_F(PictureBytes, PackBitsIsPackBits) {
    constexpr std::uint32_t compression = 259;
    const auto picture = makeGradient(40, 24, 3);
    write(*picture, "TIFF", "plain.tif");
    write(*picture, "TIFFPB", "packed.tif");
    EXPECT_EQ(tiffTag(directory.Read("plain.tif"), compression), 1U);
    EXPECT_EQ(tiffTag(directory.Read("packed.tif"), compression), 32773U);
}

TEST_F(PictureBytes, RgbIsSgi) {
    write(*makeGradient(40, 24, 3), "RGB", "picture.rgb");
    const std::string bytes = directory.Read("picture.rgb");
    EXPECT_EQ(bytes.substr(0, 2), "\x01\xDA");
}

} // namespace
