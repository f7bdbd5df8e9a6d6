#include "workbench/engine/qorrender/CommandLine.h"

#include "workbench/engine/qorrender/Output.h"
#include "workbench/engine/qorrender/Words.h"

#include <cmath>
#include <functional>
#include <limits>
#include <sstream>

namespace qor::render {

namespace {

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
            ->type_name("0|1|2")
            ->check(wholeBetween(0, 2));
        addChoice<engine::PixelFilter>(
            "--filter",
            {{"box", engine::PixelFilter::box}, {"gaussian", engine::PixelFilter::gaussian}},
            "how samples become pixels (box)",
            [this](engine::PixelFilter filter) { request_.filter = filter; });
    }

    void addView() {
        addPoint("--eye", request_.view.eye, "where the eye is, in millimetres, z up");
        addPoint("--target", request_.view.target, "what it looks at");
        addPoint("--up", request_.view.up, "what is up in the picture");
        app_.add_option("--fov", request_.view.fovDeg, "full vertical angle in degrees")
            ->type_name("DEG")
            ->check(between(0.01, 179.0));
        addChoice<engine::Projection>("--projection",
                                      {{"perspective", engine::Projection::perspective},
                                       {"parallel", engine::Projection::parallel}},
                                      "how depth is shown", [this](engine::Projection projection) {
                                          request_.view.projection = projection;
                                      });
        app_.add_option("--view-height", request_.view.viewHeightMm,
                        "height of the picture in a parallel projection")
            ->type_name("MM")
            ->check(between(1e-6, 1e9));
    }

    void addLight() {
        addChoice<bool>("--final-gather", {{"on", true}, {"off", false}},
                        "indirect light gathered at points and interpolated",
                        [this](bool on) { request_.finalGather = on; });
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
        app_.add_option("--seed", request_.seed, "of the random numbers (0)")
            ->type_name("N")
            ->check(wholeBetween(0, std::numeric_limits<unsigned>::max()));
        app_.add_option("--time-limit", request_.timeLimitS, "ends with what is there")
            ->type_name("S")
            ->check(between(0.001, 1e7));
        app_.add_option("--noise-target", request_.noiseTarget,
                        "ends when the relative mean square error is below this")
            ->type_name("E")
            ->check(between(1e-9, 1.0));
        app_.add_option("--threads", request_.threads, "0 takes all processors (0)")
            ->type_name("N")
            ->check(wholeBetween(0, 1024));
        addChoice<ProgressStyle>("--progress",
                                 {{"bar", ProgressStyle::bar},
                                  {"json", ProgressStyle::json},
                                  {"none", ProgressStyle::none}},
                                 "on the error output; a bar on a terminal, else none",
                                 [this](ProgressStyle style) { request_.progress = style; });
        app_.add_option("--stats", statistics_, "statistics of the render")->type_name("FILE.json");
    }

    /// Options about documents that keep scenes and shootings: a product has none, so they cannot
    /// be obeyed.
    void addRefused() {
        struct Refused {
            const char* name;
            const char* words;
        };

        for (const auto& [name, words] :
             {Refused{"--shooting", "NAME"}, Refused{"--frames", "FIRST:LAST[:STEP]"}})
            app_.add_option_function<std::string>(
                    name,
                    [option = std::string(name)](const std::string& text) {
                        throw CLI::ValidationError(option,
                                                   "shootings cannot be rendered from the command "
                                                   "line yet, so \"" +
                                                       text + "\" cannot be chosen");
                    },
                    "refused: only the product of a document is rendered")
                ->type_name(words);
    }

    void addPoint(const char* name, std::optional<ViewRequest::Numbers>& value, const char* help) {
        app_.add_option_function<std::string>(
                name, [name, &value](const std::string& text) { value = pointOf(name, text); },
                help)
            ->type_name("X,Y,Z");
    }

    void addCount(const char* name, std::optional<int>& value, const char* help) {
        app_.add_option(name, value, help)->type_name("N")->check(wholeBetween(0, 1000));
    }

    /// One of a few words, each of which stands for a value.
    template <typename Value>
    void addChoice(const char* name,
                   const std::vector<std::pair<std::string, Value>>& choices,
                   const char* help,
                   const std::function<void(Value)>& take) {
        std::vector<std::string> words;
        for (const auto& [word, value] : choices)
            words.push_back(word);
        app_.add_option_function<std::string>(
                name,
                [choices, take](const std::string& text) {
                    for (const auto& [word, value] : choices)
                        if (word == text)
                            take(value);
                },
                help)
            ->type_name(CLI::detail::join(words, "|"))
            ->check(CLI::IsMember(words).description(""));
    }

    void takeSize(const std::string& text) {
        const std::vector<int> size = wholeNumbersOf(text, 'x', 2);
        if (size.empty())
            throw CLI::ValidationError(
                "--size", "\"" + text + "\" is not two whole numbers with an 'x' between them");
        if (size[0] <= 0 || size[1] <= 0)
            throw CLI::ValidationError(
                "--size", "\"" + text + "\" is no picture: both sides must be positive");
        request_.width = size[0];
        request_.height = size[1];
    }

    void takeRegion(const std::string& text) {
        const std::vector<int> corners = wholeNumbersOf(text, ',', 4);
        if (corners.empty())
            throw CLI::ValidationError(
                "--region", "\"" + text + "\" is not four whole numbers, separated by ','");
        if (corners[0] >= corners[2] || corners[1] >= corners[3])
            throw CLI::ValidationError(
                "--region", "\"" + text + "\" is empty: X2 and Y2 must be larger than X1 and Y1");
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
        checkView();
    }

    /// What no model can make a view of. An upward direction may be of any length.
    void checkView() {
        using Numbers = ViewRequest::Numbers;
        ViewRequest& view = request_.view;
        if (view.eye && view.target && *view.eye == *view.target)
            throw CLI::ValidationError("--target", "the eye cannot look at where it is");
        if (!view.up)
            return;
        const auto length = [](const Numbers& v) {
            return std::hypot(v[0], v[1], v[2]);
        };
        const double upLength = length(*view.up);
        if (!(upLength > 0.0))
            throw CLI::ValidationError("--up", "0,0,0 is no direction");
        for (double& number : *view.up)
            number /= upLength;
        if (!view.eye || !view.target)
            return;
        const auto [x, y, z] = *view.up;
        const Numbers sight{(*view.target)[0] - (*view.eye)[0], (*view.target)[1] - (*view.eye)[1],
                            (*view.target)[2] - (*view.eye)[2]};
        const Numbers aside{sight[1] * z - sight[2] * y, sight[2] * x - sight[0] * z,
                            sight[0] * y - sight[1] * x};
        if (!(length(aside) > 1e-6 * length(sight)))
            throw CLI::ValidationError("--up", "it lies along the sight, from --eye to --target");
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
