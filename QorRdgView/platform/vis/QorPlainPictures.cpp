#include "platform/vis/QorPlainPictures.h"

#include "platform/system/QorFileWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>

namespace {

constexpr std::size_t headerSize = 18;
constexpr std::uint8_t uncompressedTrueColor = 2;
constexpr std::uint8_t topRowFirst = 0x20;
constexpr int largestSide = std::numeric_limits<std::uint16_t>::max();

using Header = std::array<std::uint8_t, headerSize>;

int Number(const Header& iHeader, std::size_t iAt) {
    return iHeader[iAt] | iHeader[iAt + 1] << 8;
}

QorPixelImage* Fail(QorUnicodeString& oError, const QorUnicodeString& iPath, const char* iReason) {
    oError = iPath + QorUnicodeString(": ") + QorUnicodeString(iReason);
    return nullptr;
}

/// TGA keeps blue first.
void SwapRedAndBlue(std::vector<std::uint8_t>& ioPixels, std::size_t iChannels) {
    for (std::size_t i = 0; i + iChannels <= ioPixels.size(); i += iChannels)
        std::swap(ioPixels[i], ioPixels[i + 2]);
}

/// One step of a separable resampling: which source pixels, with which weights, make a target
/// pixel.
struct Taps {
    int first;
    std::vector<float> weights;
};

/// Each target pixel averages the part of the line that it covers; when the line grows, its
/// neighbours are mixed.
std::vector<Taps> MakeTaps(int iFrom, int iTo) {
    std::vector<Taps> taps(static_cast<std::size_t>(iTo));
    const double scale = static_cast<double>(iFrom) / iTo;
    const double radius = std::max(1.0, scale);
    for (int target = 0; target < iTo; ++target) {
        const double center = (target + 0.5) * scale - 0.5;
        const int first = std::max(0, static_cast<int>(std::ceil(center - radius)));
        const int last = std::min(iFrom - 1, static_cast<int>(std::floor(center + radius)));
        Taps& tap = taps[static_cast<std::size_t>(target)];
        tap.first = first;
        double sum = 0.0;
        for (int i = first; i <= last; ++i) {
            const double weight = std::max(1.0e-6, 1.0 - std::abs(i - center) / radius);
            tap.weights.push_back(static_cast<float>(weight));
            sum += weight;
        }
        for (float& weight : tap.weights)
            weight = static_cast<float>(static_cast<double>(weight) / sum);
    }
    return taps;
}

/// Where the values of a line lie: `count` of them, `stride` apart.
struct Line {
    std::size_t start;
    std::size_t stride;
};

template <class From, class To>
void ResampleLine(const std::vector<From>& iFrom,
                  Line iSource,
                  std::vector<To>& oTo,
                  Line iTarget,
                  const std::vector<Taps>& iTaps) {
    for (std::size_t i = 0; i < iTaps.size(); ++i) {
        float sum = std::is_same_v<To, std::uint8_t> ? 0.5F : 0.0F; // rounds
        std::size_t at = iSource.start + static_cast<std::size_t>(iTaps[i].first) * iSource.stride;
        for (const float weight : iTaps[i].weights) {
            sum += weight * static_cast<float>(iFrom[at]);
            at += iSource.stride;
        }
        oTo[iTarget.start + i * iTarget.stride] = static_cast<To>(sum);
    }
}

} // namespace

QorPixelImage* QorPlainPictures::Read(const QorUnicodeString& iPath, QorUnicodeString& oError) {
    std::ifstream file(iPath.Str(), std::ios::binary);
    Header header{};
    if (!file || !file.read(reinterpret_cast<char*>(header.data()), headerSize))
        return Fail(oError, iPath, "cannot be read");
    const int width = Number(header, 12);
    const int height = Number(header, 14);
    const std::size_t channels = header[16] / 8U;
    if (header[2] != uncompressedTrueColor || header[1] != 0 || (channels != 3 && channels != 4) ||
        width == 0 || height == 0)
        return Fail(oError, iPath, "is not an uncompressed TGA picture of 24 or 32 bits");
    file.ignore(header[0]);
    const std::size_t rowSize = static_cast<std::size_t>(width) * channels;
    auto pixels = std::make_shared<QorPixelImage::Pixels>();
    pixels->reserve(rowSize);
    for (int row = 0; row < height;
         ++row) { // row by row: a header may promise more than the file holds
        pixels->resize(pixels->size() + rowSize);
        if (!file.read(reinterpret_cast<char*>(pixels->data() + pixels->size() - rowSize),
                       static_cast<std::streamsize>(rowSize)))
            return Fail(oError, iPath, "is cut short");
    }
    if ((header[17] & topRowFirst) == 0)
        for (int row = 0; row < height / 2; ++row)
            std::swap_ranges(pixels->begin() + row * static_cast<std::ptrdiff_t>(rowSize),
                             pixels->begin() + (row + 1) * static_cast<std::ptrdiff_t>(rowSize),
                             pixels->end() - (row + 1) * static_cast<std::ptrdiff_t>(rowSize));
    SwapRedAndBlue(*pixels, channels);
    return new QorPixelImage(width, height, static_cast<int>(channels), std::move(pixels));
}

int QorPlainPictures::Write(const QorPixelImage& iImage,
                            const QorString& iFormat,
                            const QorUnicodeString& iPath,
                            QorUnicodeString& oError) {
    const auto refuse = [&](const char* iReason) {
        Fail(oError, iPath, iReason);
        return 1;
    };
    if (!(iFormat == QorString("TGA")))
        return refuse("this format needs the program's picture service");
    if (iImage.IsEmpty() || iImage.GetWidth() > largestSide || iImage.GetHeight() > largestSide)
        return refuse("an empty picture, or one side above 65535 pixels, cannot be a TGA file");
    const auto low = [](int iValue) {
        return static_cast<std::uint8_t>(iValue & 0xFF);
    };
    const auto high = [](int iValue) {
        return static_cast<std::uint8_t>(iValue >> 8);
    };
    const bool hasAlpha = iImage.GetChannels() == 4;
    Header header{};
    header[2] = uncompressedTrueColor;
    header[12] = low(iImage.GetWidth());
    header[13] = high(iImage.GetWidth());
    header[14] = low(iImage.GetHeight());
    header[15] = high(iImage.GetHeight());
    header[16] = hasAlpha ? 32 : 24;
    header[17] = static_cast<std::uint8_t>(topRowFirst | (hasAlpha ? 8U : 0U));
    std::vector<std::uint8_t> pixels = *iImage.GetPixels();
    SwapRedAndBlue(pixels, static_cast<std::size_t>(iImage.GetChannels()));
    QorFileWriter writer(iPath.Str());
    writer.Write({reinterpret_cast<const char*>(header.data()), header.size()});
    writer.Write({reinterpret_cast<const char*>(pixels.data()), pixels.size()});
    if (QorSucceeded(writer.Commit()))
        return 0;
    oError = writer.GetError();
    return 1;
}

QorPixelImage* QorPlainPictures::Resize(const QorPixelImage& iImage, int iWidth, int iHeight) {
    if (iWidth <= 0 || iHeight <= 0 || iImage.IsEmpty())
        return nullptr;
    const auto channels = static_cast<std::size_t>(iImage.GetChannels());
    const auto width = static_cast<std::size_t>(iWidth);
    const auto sourceWidth = static_cast<std::size_t>(iImage.GetWidth());
    const auto sourceHeight = static_cast<std::size_t>(iImage.GetHeight());
    const std::vector<Taps> across = MakeTaps(iImage.GetWidth(), iWidth);
    std::vector<float> narrowed(width * sourceHeight * channels);
    for (std::size_t row = 0; row < sourceHeight; ++row)
        for (std::size_t channel = 0; channel < channels; ++channel)
            ResampleLine(*iImage.GetPixels(), {row * sourceWidth * channels + channel, channels},
                         narrowed, {row * width * channels + channel, channels}, across);
    const std::vector<Taps> down = MakeTaps(iImage.GetHeight(), iHeight);
    auto pixels = std::make_shared<QorPixelImage::Pixels>(
        width * static_cast<std::size_t>(iHeight) * channels);
    for (std::size_t value = 0; value < width * channels; ++value)
        ResampleLine(narrowed, {value, width * channels}, *pixels, {value, width * channels}, down);
    return new QorPixelImage(iWidth, iHeight, iImage.GetChannels(), std::move(pixels));
}
