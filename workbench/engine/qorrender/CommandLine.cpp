#include "workbench/engine/qorrender/CommandLine.h"

#include "workbench/engine/qorrender/Output.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <sstream>
#include <vector>

namespace qor::render {

namespace {

/// Numbers that are separated by \p separator, no more and no fewer than \p count.
template <typename Number>
std::vector<Number> numbersOf(const std::string& text, char separator, std::size_t count) {
    std::vector<Number> numbers;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (numbers.size() < count) {
        Number value{};
        const auto [next, error] = std::from_chars(at, end, value);
        if (error != std::errc())
            break;
        numbers.push_back(value);
        at = next;
        if (at == end || *at != separator)
            break;
        ++at;
    }
    if (numbers.size() != count || at != end)
        return {};
    return numbers;
}

template <typename Number>
std::vector<Number>
require(const std::string& option, const std::string& text, char separator, std::size_t count) {
    std::vector<Number> numbers = numbersOf<Number>(text, separator, count);
    if (numbers.empty())
        throw CLI::ValidationError(option, "\"" + text + "\" is not " + std::to_string(count) +
                                               " numbers, separated by '" + separator + "'");
    return numbers;
}

/// What is wrong with the name of a scene, or nothing.
std::string isScene(const std::string& name) {
    constexpr std::size_t longest = 6;
    const bool isNumber =
        !name.empty() && name.size() <= longest && name.front() != '0' &&
        std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
    return isNumber || name == "custom"
               ? std::string()
               : "\"" + name + "\" is no scene: a number from 1 on, or custom";
}

class Parser {
public:
    explicit Parser(bool onTerminal) {
        request_.progress = onTerminal ? ProgressStyle::bar : ProgressStyle::none;
        addPicture();
        addView();
        addLight();
        addWork();
        addRefused();
        app_.add_option("MODEL", model_,
                        "a model (STEP, IGES, BREP, glTF, OBJ, STL, PLY) or a document (.qor)")
            ->required();
    }

    ParsedCommandLine parse(int argc, const char* const* argv) {
        try {
            app_.parse(argc, argv);
            check();
        } catch (const CLI::ParseError& error) {
            std::ostringstream out;
            std::ostringstream complaint;
            const int code = app_.exit(error, out, complaint);
            return {std::nullopt, code == 0 ? out.str() : complaint.str(),
                    code == 0 ? done : usage};
        }
        request_.model = model_;
        return {request_, {}, done};
    }

private:
    void addPicture() {
        app_.add_option("-o,--output", output_,
                        "the picture to write: .png .tif .jpg .bmp .tga .psd .rgb .pic, or .pfm "
                        "(linear radiance)")
            ->type_name("FILE")
            ->default_val("quick-render.png");
        app_.add_option_function<std::string>(
                "--size", [this](const std::string& text) { takeSize(text); },
                "width and height in pixels (1280x960)")
            ->type_name("WxH");
        app_.add_option_function<std::string>(
                "--region", [this](const std::string& text) { takeRegion(text); },
                "the part to render and write, from the top left, X2 and Y2 excluded")
            ->type_name("X1,Y1,X2,Y2");
        app_.add_option("--quality", request_.quality, "0 draft, 1 good, 2 final (1)")
            ->check(CLI::Range(0, 2));
        app_.add_option("--filter", request_.filter, "how samples become pixels (box)")
            ->transform(CLI::Transformer(std::map<std::string, engine::PixelFilter>{
                {"box", engine::PixelFilter::box}, {"gaussian", engine::PixelFilter::gaussian}}));
    }

    void addView() {
        addPoint("--eye", request_.view.eye, "where the eye is, in millimetres, z up");
        addPoint("--target", request_.view.target, "what it looks at");
        addPoint("--up", request_.view.up, "what is up in the picture");
        app_.add_option("--fov", request_.view.fovDeg, "full vertical angle in degrees")
            ->type_name("DEG")
            ->check(CLI::Range(0.01, 179.0));
        app_.add_option_function<std::string>(
                "--projection",
                [this](const std::string& text) {
                    request_.view.projection = text == "parallel" ? engine::Projection::parallel
                                                                  : engine::Projection::perspective;
                },
                "how depth is shown")
            ->type_name("perspective|parallel")
            ->check(CLI::IsMember({"perspective", "parallel"}));
        app_.add_option("--view-height", request_.view.viewHeightMm,
                        "height of the picture in a parallel projection")
            ->type_name("MM")
            ->check(CLI::Range(1e-6, 1e9));
    }

    void addLight() {
        app_.add_option_function<std::string>(
                "--final-gather",
                [this](const std::string& text) { request_.finalGather = text == "on"; },
                "indirect light gathered at points and interpolated")
            ->type_name("on|off")
            ->check(CLI::IsMember({"on", "off"}));
        app_.add_option("--scene", request_.scene,
                        "the quick render's scene: its number in the catalog, or the custom one of "
                        "the settings")
            ->type_name("N|custom")
            ->check(isScene);
        addCount("--reflections", request_.reflections, "how often light is mirrored");
        addCount("--refractions", request_.refractions, "how often it is bent");
        addCount("--diffuse-bounces", request_.diffuseBounces,
                 "how often it is scattered; 0 is direct light only");
        app_.add_flag("--no-denoise", noDenoise_, "leave the noise in, as is always done");
    }

    void addWork() {
        app_.add_option("--seed", request_.seed, "of the random numbers (0)")->type_name("N");
        app_.add_option("--time-limit", request_.timeLimitS, "ends with what is there")
            ->type_name("S")
            ->check(CLI::Range(0.001, 1e7));
        app_.add_option("--noise-target", request_.noiseTarget,
                        "ends when the relative mean square error is below this")
            ->type_name("E")
            ->check(CLI::Range(1e-9, 1.0));
        app_.add_option("--threads", request_.threads, "0 takes all processors (0)")
            ->type_name("N")
            ->check(CLI::Range(0, 1024));
        app_.add_option("--progress", request_.progress,
                        "on the error output; a bar on a terminal, else none")
            ->type_name("bar|json|none")
            ->transform(CLI::Transformer(
                std::map<std::string, ProgressStyle>{{"bar", ProgressStyle::bar},
                                                     {"json", ProgressStyle::json},
                                                     {"none", ProgressStyle::none}}));
        app_.add_option("--stats", statistics_, "statistics of the render")->type_name("FILE.json");
    }

    /// Options about documents that keep scenes and shootings: a product has none, so they cannot
    /// be obeyed.
    void addRefused() {
        for (const char* name : {"--shooting", "--frames"})
            app_.add_option_function<std::string>(
                    name,
                    [name](const std::string& text) {
                        throw CLI::ValidationError(name,
                                                   "shootings cannot be rendered from the command "
                                                   "line yet, so \"" +
                                                       text + "\" cannot be chosen");
                    },
                    "refused: only the product of a document is rendered")
                ->type_name("NAME");
    }

    void addPoint(const char* name, std::optional<ViewRequest::Numbers>& value, const char* help) {
        app_.add_option_function<std::string>(
                name,
                [name, &value](const std::string& text) {
                    const std::vector<double> numbers = require<double>(name, text, ',', 3);
                    value = {numbers[0], numbers[1], numbers[2]};
                    for (const double number : *value)
                        if (!std::isfinite(number))
                            throw CLI::ValidationError(name, "\"" + text + "\" is not finite");
                },
                help)
            ->type_name("X,Y,Z");
    }

    void addCount(const char* name, std::optional<int>& value, const char* help) {
        app_.add_option(name, value, help)->type_name("N")->check(CLI::Range(0, 1000));
    }

    void takeSize(const std::string& text) {
        const std::vector<int> size = require<int>("--size", text, 'x', 2);
        if (size[0] <= 0 || size[1] <= 0)
            throw CLI::ValidationError(
                "--size", "\"" + text + "\" is no picture: both sides must be positive");
        request_.width = size[0];
        request_.height = size[1];
    }

    void takeRegion(const std::string& text) {
        const std::vector<int> corners = require<int>("--region", text, ',', 4);
        request_.region = {corners[0], corners[1], corners[2], corners[3]};
    }

    void check() {
        request_.output = output_;
        request_.statistics = statistics_;
        if (!knowsFormatOf(request_.output))
            throw CLI::ValidationError("--output",
                                       "\"" + output_ + "\" has no ending of a picture format");
        if (request_.view.viewHeightMm &&
            request_.view.projection == engine::Projection::perspective)
            throw CLI::ValidationError("--view-height", "only a parallel projection has one");
    }

    CLI::App app_{"Renders a product model to a picture.", "qorrender"};
    Request request_;
    std::string model_;
    std::string output_ = "quick-render.png";
    std::string statistics_;
    bool noDenoise_ = true; ///< there is no denoiser to switch off
};

} // namespace

ParsedCommandLine parseCommandLine(int argc, const char* const* argv, bool onTerminal) {
    return Parser(onTerminal).parse(argc, argv);
}

} // namespace qor::render
