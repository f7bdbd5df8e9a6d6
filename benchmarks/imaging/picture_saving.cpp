// Saving a picture of 3840 by 2160 pixels in each format, onto the disk and in place, against
// ImageMagick's own command that makes the same kind of file from an uncompressed one. Counters, of
// medians: `ours_ms` and `convert_ms` on the wall, `ratio` of the two (goal: at most 1.2), and
// `processor_ratio` of processor time, which other programs disturb less.
#include "workbench/imaging/PictureFiles.h"
#include "workbench/imaging/PictureFormat.h"

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

namespace {

using namespace qor::imaging;
namespace fs = std::filesystem;

constexpr int width = 3840;
constexpr int height = 2160;

/// What renders look like: smooth shading, edges, a plain background, a little grain in the parts.
QorPixelImage_var makePicture(int channels) {
    auto pixels = std::make_shared<QorPixelImage::Pixels>();
    pixels->reserve(std::size_t{width} * height * static_cast<std::size_t>(channels));
    std::uint32_t state = 1;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool part = std::hypot(x % 640 - 320, y % 540 - 270) < 230;
            const double shade = part ? 90 + 70 * std::sin(x / 97.0) * std::cos(y / 71.0) : 200;
            state = state * 1664525U + 1013904223U; // Numerical Recipes, quick and dirty generator
            const int grain = part ? static_cast<int>(state >> 30U) : 0;
            for (const double tint : {1.0, 0.9, 0.8})
                pixels->push_back(static_cast<std::uint8_t>(shade * tint + grain));
            if (channels == 4)
                pixels->push_back(part ? 255 : static_cast<std::uint8_t>(255 - y * 200 / height));
        }
    return QorMake<QorPixelImage>(width, height, channels, std::move(pixels));
}

/// The options that make ImageMagick write what a format's keyword stands for.
std::string convertOptions(std::string_view keyword) {
    struct Row {
        std::string_view keyword;
        const char* options;
    };

    constexpr Row rows[] = {
        {"TIFF", "-compress none TIFF:"},
        {"TIFFPB", "-compress RLE TIFF:"},
        {"RGB", "-compress RLE SGI:"},
        {"BMP", "BMP:"},
        {"JPEG_FAIR", "-quality 50 JPEG:"},
        {"JPEG", "-quality 80 JPEG:"},
        {"JPEG_HIGH", "-quality 97 -sampling-factor 1x1 JPEG:"},
        {"PICT", "PICT:"},
        {"PSD", "-compress RLE PSD:"},
        {"PNG", "PNG:"},
        {"TGA", "-compress none TGA:"},
    };
    for (const Row& row : rows)
        if (row.keyword == keyword)
            return row.options;
    std::abort();
}

/// The pictures with three and four channels, in memory and, uncompressed, in files.
class Sources {
public:
    Sources() : folder_(fs::temp_directory_path() / ("qor-benchmark-" + std::to_string(getpid()))) {
        fs::create_directory(folder_);
        for (const int channels : {3, 4}) {
            pictures_[channels - 3] = makePicture(channels);
            const auto& pixels = *pictures_[channels - 3]->GetPixels();
            std::ofstream(raw(channels), std::ios::binary)
                .write(reinterpret_cast<const char*>(pixels.data()), std::ssize(pixels)); // NOLINT
        }
    }

    ~Sources() { fs::remove_all(folder_); }

    Sources(const Sources&) = delete;
    Sources& operator=(const Sources&) = delete;
    Sources(Sources&&) = delete;
    Sources& operator=(Sources&&) = delete;

    [[nodiscard]] const QorPixelImage& picture(int channels) const {
        return *pictures_[channels - 3];
    }

    [[nodiscard]] fs::path raw(int channels) const {
        return folder_ / (channels == 4 ? "raw.rgba" : "raw.rgb");
    }

    [[nodiscard]] std::string target(const char* name) const { return (folder_ / name).string(); }

private:
    fs::path folder_;
    QorPixelImage_var pictures_[2];
};

const Sources& sources() {
    static const Sources made;
    return made;
}

double processorSeconds(int who) {
    rusage used{};
    getrusage(static_cast<decltype(RUSAGE_SELF)>(who), &used);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

/// Times of one side, in milliseconds.
struct Times {
    std::vector<double> wall;
    std::vector<double> processor;

    bool take(int who, const std::function<bool()>& work) {
        const double before = processorSeconds(who);
        const auto start = std::chrono::steady_clock::now();
        const bool done = work();
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        wall.push_back(1e3 * time.count());
        processor.push_back(1e3 * (processorSeconds(who) - before));
        return done;
    }
};

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + std::ssize(values) / 2, values.end());
    return values[values.size() / 2];
}

bool save(const PictureFormat& format, int channels) {
    PictureFiles files;
    QorUnicodeString error;
    return files.Write(sources().picture(channels), QorString(format.keyword),
                       sources().target("ours"), error) == 0;
}

std::string convertCommand(const PictureFormat& format, int channels) {
    return QOR_CONVERT " -size " + std::to_string(width) + "x" + std::to_string(height) +
           " -depth 8 " + sources().raw(channels).string() + " " + convertOptions(format.keyword) +
           sources().target("theirs");
}

void SavePicture(benchmark::State& state, const PictureFormat& format, int channels) {
    const std::string command = convertCommand(format, channels);
    Times ours;
    Times theirs;
    for (auto _ : state) {
        const bool done = ours.take(RUSAGE_SELF, [&] { return save(format, channels); }) &&
                          theirs.take(RUSAGE_CHILDREN, [&] {
                              return std::system(command.c_str()) == 0; // NOLINT: a fixed command
                          });
        if (!done)
            return state.SkipWithError("the picture cannot be saved");
    }
    state.counters["ours_ms"] = median(ours.wall);
    state.counters["convert_ms"] = median(theirs.wall);
    state.counters["ratio"] = median(ours.wall) / median(theirs.wall);
    state.counters["processor_ratio"] = median(ours.processor) / median(theirs.processor);
}

const bool registered = [] {
    for (const int channels : {3, 4})
        for (const PictureFormat& format : pictureFormats())
            benchmark::RegisterBenchmark(
                ("SavePicture/" + std::string(format.keyword) + (channels == 4 ? "/alpha" : ""))
                    .c_str(),
                [&format, channels](benchmark::State& state) {
                    SavePicture(state, format, channels);
                })
                ->Iterations(7)
                ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
