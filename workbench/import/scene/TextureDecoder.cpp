#include "workbench/import/scene/TextureDecoder.h"

#include "workbench/import/model/ImportError.h"

#include <Magick++.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace qor::import {

using document::Texture;

namespace {

struct Signature {
    std::string_view head;
    const char* coder;
};

using namespace std::string_view_literals;

constexpr auto signatures = std::to_array<Signature>({
    {"\x89PNG\r\n\x1a\n"sv, "PNG"},
    {"\xFF\xD8\xFF"sv, "JPEG"},
    {"RIFF"sv, "WEBP"},
    {"II*\0"sv, "TIFF"},
    {"MM\0*"sv, "TIFF"},
    {"BM"sv, "BMP"},
    {"GIF8"sv, "GIF"},
});

// A Targa file has no signature; its second and third bytes say how colours are kept.
bool looksLikeTarga(std::span<const std::uint8_t> bytes) {
    return bytes.size() > 18 && bytes[1] <= 1 &&
           (bytes[2] == 2 || bytes[2] == 3 || bytes[2] == 10 || bytes[2] == 11);
}

const char* coderOf(std::span<const std::uint8_t> bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    for (const Signature& signature : signatures)
        if (text.starts_with(signature.head))
            return signature.coder;
    if (looksLikeTarga(bytes))
        return "TGA";
    throw ImportError("it is no picture of a known kind");
}

void prepareLibrary() {
    static const bool once = [] {
        Magick::InitializeMagick(nullptr);
        Magick::ResourceLimits::thread(1);
        Magick::ResourceLimits::width(largestTextureSide);
        Magick::ResourceLimits::height(largestTextureSide);
        Magick::ResourceLimits::area(std::uint64_t{largestTextureSide} * largestTextureSide);
        Magick::ResourceLimits::memory(std::uint64_t{4} << 30);
        Magick::ResourceLimits::map(0);
        Magick::ResourceLimits::disk(0);
        return true;
    }();
    static_cast<void>(once);
}

Texture decode(std::span<const std::uint8_t> bytes) {
    Magick::Image image;
    image.magick(coderOf(bytes));
    image.quiet(true);
    image.read(Magick::Blob(bytes.data(), bytes.size()));
    if (image.columns() == 0 || image.rows() == 0)
        throw ImportError("its size cannot be had; the largest is " +
                          std::to_string(largestTextureSide) + " pixels a side");
    Texture texture;
    texture.width = static_cast<std::uint32_t>(image.columns());
    texture.height = static_cast<std::uint32_t>(image.rows());
    texture.pixels.resize(std::size_t{4} * texture.width * texture.height);
    image.write(0, 0, texture.width, texture.height, "RGBA", Magick::CharPixel,
                texture.pixels.data());
    return texture;
}

// What the picture library says, without its own places: "program: text `file' @ place".
std::string reasonOf(const Magick::Exception& error) {
    std::string text = error.what();
    if (const std::size_t place = text.find(" @ "); place != std::string::npos)
        text.resize(place);
    if (const std::size_t file = text.find(" `"); file != std::string::npos)
        text.resize(file);
    if (const std::size_t program = text.find(": "); program != std::string::npos)
        text.erase(0, program + 2);
    return text;
}

} // namespace

Texture decodeTexture(std::span<const std::uint8_t> bytes) {
    prepareLibrary();
    if (bytes.empty())
        throw ImportError("it is empty");
    try {
        return decode(bytes);
    } catch (const Magick::Exception& error) {
        throw ImportError("it cannot be decoded: " + reasonOf(error));
    }
}

} // namespace qor::import
