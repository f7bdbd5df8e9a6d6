#include "workbench/imaging/PictureFormat.h"

#include <array>
#include <cstdint>

namespace qor::imaging {

namespace {

using namespace std::string_view_literals;

// The sides are what the files' own fields can hold, or the format's rules allow; our own limit for
// the others.
constexpr int sixteenBits = 65535;
constexpr int unlimited = 100000;
constexpr int photoshopSide = 30000;
constexpr int quickDrawSide = 8191; // four bytes a pixel, and fifteen bits for the bytes of a row
constexpr int jpegSide = 65500;

constexpr auto formats = std::to_array<PictureFormat>({
    {"TIFF", "TIFF", Compression::none, 0, true, true, true, false, unlimited},
    {"TIFFPB", "TIFF", Compression::packBits, 0, true, true, true, false, unlimited},
    {"RGB", "SGI", Compression::runLength, 0, true, true, false, false, sixteenBits},
    {"BMP", "BMP", Compression::none, 0, true, true, false, false, unlimited},
    {"JPEG_FAIR", "JPEG", Compression::jpeg, 50, false, false, true, false, jpegSide},
    {"JPEG", "JPEG", Compression::jpeg, 80, false, false, true, false, jpegSide},
    {"JPEG_HIGH", "JPEG", Compression::jpeg, 97, true, false, true, false, jpegSide},
    {"PICT", "PICT", Compression::none, 0, true, true, true, true, quickDrawSide},
    {"PSD", "PSD", Compression::runLength, 0, true, true, true, true, photoshopSide},
    {"PNG", "PNG", Compression::zip, 0, true, true, true, false, unlimited},
    {"TGA", "TGA", Compression::none, 0, true, true, false, false, sixteenBits},
});

struct Signature {
    std::size_t offset;
    std::string_view bytes;
    const char* coder;
};

constexpr auto signatures = std::to_array<Signature>({
    {0, "\x89PNG\r\n\x1a\n"sv, "PNG"},
    {0, "\xFF\xD8\xFF"sv, "JPEG"},
    {0, "II*\0"sv, "TIFF"},
    {0, "MM\0*"sv, "TIFF"},
    {0, "8BPS\0\1"sv, "PSD"},
    {0, "BM"sv, "BMP"},
    {0, "\x01\xDA"sv, "SGI"},
    {522, "\x00\x11\x02\xFF"sv, "PICT"}, // behind 512 bytes that mean nothing, a size and a frame
});

// A Targa file has no signature; its second and third bytes say how colours are kept.
bool looksLikeTarga(std::string_view bytes) {
    constexpr std::size_t header = 18;
    if (bytes.size() <= header || bytes[1] < 0 || bytes[1] > 1)
        return false;
    const auto kind = static_cast<std::uint8_t>(bytes[2]);
    const auto depth = static_cast<std::uint8_t>(bytes[16]);
    constexpr std::uint8_t packed = 8;
    return ((kind & ~packed) >= 1 && (kind & ~packed) <= 3) && depth % 8 == 0 && depth >= 8 &&
           depth <= 32;
}

} // namespace

std::span<const PictureFormat> pictureFormats() {
    return formats;
}

const PictureFormat* findPictureFormat(std::string_view keyword) {
    for (const PictureFormat& format : formats)
        if (format.keyword == keyword)
            return &format;
    return nullptr;
}

const char* coderOfFile(std::string_view bytes) {
    for (const Signature& signature : signatures)
        if (bytes.size() > signature.offset &&
            bytes.substr(signature.offset).starts_with(signature.bytes))
            return signature.coder;
    return looksLikeTarga(bytes) ? "TGA" : nullptr;
}

} // namespace qor::imaging
