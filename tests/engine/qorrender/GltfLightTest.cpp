// What a glTF file says of light and of the work to be done for it, by the numbers that it must
// show.
#include "tests/engine/qorrender/WallFile.h"

namespace qor::render::testing {
namespace {

TEST_F(GltfProgram, ADirectionalLightIsTheIrradianceOfWhatFacesIt) {
    for (const double degrees : {0.0, 60.0, 80.0}) {
        WallFile file;
        file.wall(file.matt(0.6F, 0.3F, 0.1F));
        file.light({{"type", "directional"}, {"intensity", 2}, {"color", {1, 0.5, 0.25}}},
                   turned(degrees));
        for (const char* words : {"", "--diffuse-bounces 0", "--final-gather on", "--quality 0"}) {
            const Shown shown = middle(file, words);
            for (const auto& [channel, albedo, color] :
                 {std::tuple{0, 0.6, 1.0}, {1, 0.3, 0.5}, {2, 0.1, 0.25}}) {
                const double wanted = albedo / pi * 2.0 * color * std::cos(degrees * pi / 180);
                EXPECT_NEAR(shown.mean(channel), wanted, 1e-4 * wanted) << degrees << words;
            }
        }
    }
}

TEST_F(GltfProgram, ALightsAngleIsTheFullAngleOfItsDisc) {
    constexpr int size = 64;
    constexpr double away = 2.0; // of the edge from the wall, in metres
    for (const double degrees : {0.5, 5.0, 20.0}) {
        WallFile file;
        const int white = file.matt(1, 1, 1);
        file.wall(white, -50, 50, -50, 50, 0);
        file.wall(white, -20, 0, -20, 20, away);
        file.light(
            {{"type", "directional"}, {"intensity", pi}, {"extras", {{"angle_deg", degrees}}}});
        const double width = 2 * away * std::tan(degrees * pi / 360);
        const double height = 1.6 * width;
        const Shown shown = show(file,
                                 "--eye 0,-1000,0 --target 0,0,0 --diffuse-bounces 0 --quality 2 "
                                 "--view-height " +
                                     std::to_string(1000 * height),
                                 size);
        for (int x = 0; x < size; ++x) {
            double lit = 0;
            for (int y = 0; y < size; ++y)
                lit += static_cast<double>(shown.at(x, y)) / size;
            // The part of a disc on one side of a chord.
            const double at = std::clamp(((x + 0.5) / size - 0.5) * height / (width / 2), -1., 1.);
            const double wanted = 0.5 + (at * std::sqrt(1 - at * at) + std::asin(at)) / pi;
            EXPECT_NEAR(lit, wanted, 0.01) << degrees << " column " << x;
        }
    }
}

TEST_F(GltfProgram, AnAngleOfNothingGivesHardShadows) {
    WallFile file;
    const int white = file.matt(1, 1, 1);
    file.wall(white, -50, 50, -50, 50, 0);
    file.wall(white, -20, 0, -20, 20, 2);
    file.light({{"type", "directional"}, {"intensity", pi}});
    const Shown shown =
        show(file, "--eye 0,-1000,0 --target 0,0,0 --diffuse-bounces 0 --view-height 10", 16);
    for (int y = 0; y < 16; ++y) {
        EXPECT_EQ(shown.at(7, y), 0.0F);
        EXPECT_NEAR(shown.at(8, y), 1.0F, 1e-5F);
    }
}

TEST_F(GltfProgram, SurroundingsAreSeenAndScatteredAsTheyAre) {
    WallFile file;
    file.wall(file.matt(0.8F, 0.5F, 0.2F));
    file.extras()["environment"] = {2, 1, 0.5};
    for (const char* words : {"", "--diffuse-bounces 0", "--final-gather on"}) {
        const Shown shown = show(file, front + "--view-height 4000 " + words);
        for (const auto& [channel, wall, sky] :
             {std::tuple{0, 1.6F, 2.0F}, {1, 0.5F, 1.0F}, {2, 0.1F, 0.5F}}) {
            EXPECT_NEAR(shown.at(4, 4, channel), wall, 1e-5F) << words;
            EXPECT_EQ(shown.at(0, 0, channel), sky) << words;
        }
    }
}

TEST_F(GltfProgram, PointAndSpotLightsFallWithTheSquareInMetres) {
    const Json above{{"translation", {0, 0, 2}}};
    const double wanted = 0.5 / pi * 5 / 4;
    WallFile point;
    point.wall(point.matt());
    point.light({{"type", "point"}, {"intensity", 5}}, above);
    EXPECT_NEAR(middle(point).mean(), wanted, 1e-3 * wanted);
    WallFile spot;
    spot.wall(spot.matt(), -3, 3, -3, 3, 0);
    spot.light({{"type", "spot"},
                {"intensity", 5},
                {"spot", {{"innerConeAngle", 0.2}, {"outerConeAngle", 0.5}}}},
               above);
    EXPECT_NEAR(middle(spot).mean(), wanted, 1e-3 * wanted);
    constexpr int size = 101;
    const Shown shown = show(spot, front + "--view-height 4000 --diffuse-bounces 0", size);
    const auto shareAt = [&](double angle) {
        const int x = size / 2 + static_cast<int>(std::lround(2 * std::tan(angle) / 4 * size));
        return static_cast<double>(shown.at(x, size / 2)) / wanted / std::pow(std::cos(angle), 3);
    };
    EXPECT_NEAR(shareAt(0.18), 1.0, 0.02);
    EXPECT_GT(shareAt(0.35), 0.2);
    EXPECT_LT(shareAt(0.35), 0.8);
    EXPECT_EQ(shareAt(0.54), 0.0);
}

TEST_F(GltfProgram, WorkLimitsBouncesOfEachKind) {
    struct Row {
        const char* kind;
        int bounces;
        const char* words;
        bool bright;
    };

    for (const Row& row : {
             Row{"diffuse_bounces", 0, "", false},
             Row{"diffuse_bounces", 1, "", true},
             Row{"diffuse_bounces", 0, "--diffuse-bounces 1", true},
             Row{"diffuse_bounces", 1, "--diffuse-bounces 0", false},
             Row{"diffuse_bounces", 1000000000, "", true},
             Row{"glossy_bounces", 0, "", false},
             Row{"glossy_bounces", 1, "", true},
             Row{"glossy_bounces", 0, "--reflections 1", true},
             Row{"transmission_bounces", 0, "", false},
             Row{"transmission_bounces", 2, "", true},
             Row{"transmission_bounces", 2, "--refractions 0", false},
         }) {
        WallFile file;
        const std::string kind = row.kind;
        int material = file.matt(1, 1, 1); // lit from its back only, and by the wall behind the eye
        auto& look = file.json["materials"][0]["pbrMetallicRoughness"];
        if (kind == "glossy_bounces")
            look.update({{"metallicFactor", 1}, {"roughnessFactor", 0}});
        if (kind == "transmission_bounces") {
            look["roughnessFactor"] = 0;
            file.use("KHR_materials_transmission");
            file.json["materials"][0]["extensions"]["KHR_materials_transmission"] = {
                {"transmissionFactor", 1}};
        }
        file.wall(material);
        const int white = file.matt(1, 1, 1);
        const bool through = kind == "transmission_bounces";
        file.wall(white, -30, 30, -30, 30, through ? -8.0F : 8.0F);
        // Past the small wall, straight onto the large one.
        file.light({{"type", "directional"}, {"intensity", pi}}, turned(through ? 30 : 210));
        file.extras()["work"] = {{kind, row.bounces}};
        EXPECT_EQ(middle(file, row.words).mean() > 0.05, row.bright)
            << kind << ' ' << row.bounces << ' ' << row.words;
    }
}

} // namespace
} // namespace qor::render::testing
