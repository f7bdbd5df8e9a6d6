#include "workbench/document/product/tables/MaterialColumns.h"

#include <array>

namespace qor::document::tables {

namespace {

constexpr std::array columns{
    MaterialColumn{"base_r",
                   [](Material& m) -> double& {
                       return m.baseColor[0];
                   }},
    MaterialColumn{"base_g",
                   [](Material& m) -> double& {
                       return m.baseColor[1];
                   }},
    MaterialColumn{"base_b",
                   [](Material& m) -> double& {
                       return m.baseColor[2];
                   }},
    MaterialColumn{"base_a",
                   [](Material& m) -> double& {
                       return m.baseColor[3];
                   }},
    MaterialColumn{"metallic",
                   [](Material& m) -> double& {
                       return m.metallic;
                   }},
    MaterialColumn{"roughness",
                   [](Material& m) -> double& {
                       return m.roughness;
                   }},
    MaterialColumn{"transmission",
                   [](Material& m) -> double& {
                       return m.transmission;
                   }},
    MaterialColumn{"ior",
                   [](Material& m) -> double& {
                       return m.ior;
                   }},
    MaterialColumn{"emission_r",
                   [](Material& m) -> double& {
                       return m.emission[0];
                   }},
    MaterialColumn{"emission_g",
                   [](Material& m) -> double& {
                       return m.emission[1];
                   }},
    MaterialColumn{"emission_b",
                   [](Material& m) -> double& {
                       return m.emission[2];
                   }},
    MaterialColumn{"normal_scale",
                   [](Material& m) -> double& {
                       return m.normalScale;
                   }},
    MaterialColumn{"occlusion",
                   [](Material& m) -> double& {
                       return m.occlusionStrength;
                   }},
    MaterialColumn{"coat",
                   [](Material& m) -> double& {
                       return m.clearcoat;
                   }},
    MaterialColumn{"coat_roughness",
                   [](Material& m) -> double& {
                       return m.clearcoatRoughness;
                   }},
    MaterialColumn{"coat_normal_scale",
                   [](Material& m) -> double& {
                       return m.clearcoatNormalScale;
                   }},
    MaterialColumn{"thickness_mm",
                   [](Material& m) -> double& {
                       return m.thicknessMm;
                   }},
    MaterialColumn{"attenuation_mm",
                   [](Material& m) -> double& {
                       return m.attenuationDistanceMm;
                   }},
    MaterialColumn{"attenuation_r",
                   [](Material& m) -> double& {
                       return m.attenuationColor[0];
                   }},
    MaterialColumn{"attenuation_g",
                   [](Material& m) -> double& {
                       return m.attenuationColor[1];
                   }},
    MaterialColumn{"attenuation_b",
                   [](Material& m) -> double& {
                       return m.attenuationColor[2];
                   }},
    MaterialColumn{"alpha_cutoff",
                   [](Material& m) -> double& {
                       return m.alphaCutoff;
                   }},
};

constexpr std::array<const char*, textureSlotCount> slotNames{
    "base", "metallic_roughness", "normal",     "occlusion", "emission", "transmission",
    "coat", "coat_roughness",     "coat_normal"};

} // namespace

std::span<const MaterialColumn> materialColumns() {
    return columns;
}

std::span<const char* const> textureSlotNames() {
    return slotNames;
}

} // namespace qor::document::tables
