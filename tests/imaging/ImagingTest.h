#pragma once

#include "tests/support/QorTestApplication.h"
#include "workbench/imaging/PictureFiles.h"

#include <cstdio>
#include <cstdlib>

/// A picture service of the room under test, and the other programs that look at its files.
class ImagingTest : public QorTestApplication {
protected:
    using Pixels = QorPixelImage::Pixels;

    /// Smooth enough for JPEG, and with a different value in every channel, row and column.
    static QorPixelImage_var makeGradient(int width, int height, int channels) {
        auto pixels = std::make_shared<Pixels>();
        for (int row = 0; row < height; ++row)
            for (int column = 0; column < width; ++column) {
                pixels->push_back(static_cast<std::uint8_t>(column * 255 / width));
                pixels->push_back(static_cast<std::uint8_t>(row * 255 / height));
                pixels->push_back(static_cast<std::uint8_t>(64 + (row + column) / 4));
                if (channels == 4)
                    pixels->push_back(static_cast<std::uint8_t>(255 - row * 200 / height));
            }
        return QorMake<QorPixelImage>(width, height, channels, std::move(pixels));
    }

    /// Grain that compresses badly, so that qualities and compressions differ.
    static QorPixelImage_var makeGrain(int side) {
        auto pixels = std::make_shared<Pixels>();
        std::uint32_t state = 1;
        for (int i = 0; i < side * side * 3; ++i) {
            state = state * 1664525U + 1013904223U; // Numerical Recipes, quick and dirty generator
            pixels->push_back(static_cast<std::uint8_t>(state >> 24U));
        }
        return QorMake<QorPixelImage>(side, side, 3, std::move(pixels));
    }

    /// What a shell command prints.
    static std::string run(const std::string& command) {
        std::string output;
        std::FILE* pipe = popen(command.c_str(), "r");
        std::array<char, 4096> buffer{};
        while (const std::size_t count = fread(buffer.data(), 1, buffer.size(), pipe))
            output.append(buffer.data(), count);
        EXPECT_EQ(pclose(pipe), 0) << command;
        return output;
    }

    /// What `identify` says of a file under a format of its own language.
    static std::string identify(const std::string& path, const std::string& format) {
        return run(std::string(QOR_IDENTIFY) + " -format '" + format + "' '" + path + "[0]'");
    }

    /// Bytes of a file's pixels as `convert` sees them, \p map being rgb or rgba.
    static Pixels convertedPixels(const std::string& path, const std::string& map) {
        const std::string bytes =
            run(std::string(QOR_CONVERT) + " '" + path + "[0]' -depth 8 " + map + ":-");
        return {bytes.begin(), bytes.end()};
    }

    std::string write(const QorPixelImage& image, const char* format, const std::string& name) {
        const std::string path = directory.GetPath(name);
        QorUnicodeString error;
        EXPECT_EQ(files.Write(image, format, QorUnicodeString(path), error), 0) << error;
        return path;
    }

    QorPixelImage_var read(const std::string& path) {
        return QorAdopt(files.Read(QorUnicodeString(path), lastError));
    }

    qor::imaging::PictureFiles files;
    QorUnicodeString lastError;
};

/// Largest difference of two byte arrays; 1000 when their sizes differ.
inline int largestDifference(const QorPixelImage::Pixels& a, const QorPixelImage::Pixels& b) {
    if (a.size() != b.size())
        return 1000;
    int largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::abs(int{a[i]} - int{b[i]}));
    return largest;
}
