#pragma once

#include <nlohmann/json.hpp>

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace qor::import::testing {

inline std::string base64(std::string_view bytes) {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k)
            bits =
                bits << 8 | (i + k < bytes.size() ? static_cast<std::uint8_t>(bytes[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            out += i + k > bytes.size() ? '=' : alphabet[bits >> (18 - 6 * k) & 63];
    }
    return out;
}

/// A picture of 2 x 2 pixels as BMP: red, green / blue, white from the top left.
inline std::string smallBmp() {
    std::string bmp("BM", 2);
    const auto word = [&bmp](std::uint32_t value, std::size_t bytes) {
        for (std::size_t i = 0; i < bytes; ++i)
            bmp += static_cast<char>(value >> (8 * i) & 255);
    };
    word(54 + 16, 4);
    word(0, 4);
    word(54, 4);
    word(40, 4);
    word(2, 4);
    word(2, 4);
    word(1, 2);
    word(24, 2);
    for (int i = 0; i < 6; ++i)
        word(i == 1 ? 16 : 0, 4);
    bmp += std::string("\xFF\0\0\xFF\xFF\xFF\0\0", 8); // lower row: blue, white, padding
    bmp += std::string("\0\0\xFF\0\xFF\0\0\0", 8);     // upper row: red, green, padding
    return bmp;
}

/// Builds glTF with one buffer, kept in the file as a data URI, or as the chunk of a .glb.
class GltfBuilder {
public:
    GltfBuilder() { json["asset"]["version"] = "2.0"; }

    /// A view of \p bytes.
    int view(std::string_view bytes) {
        json["bufferViews"].push_back(
            {{"buffer", 0}, {"byteOffset", data.size()}, {"byteLength", bytes.size()}});
        data += bytes;
        data.resize((data.size() + 3) / 4 * 4);
        return static_cast<int>(json["bufferViews"].size()) - 1;
    }

    /// An accessor of floats; \p type is "SCALAR", "VEC2", "VEC3" or "VEC4".
    int floats(const std::vector<float>& values, const std::string& type) {
        const std::size_t width =
            type == "SCALAR" ? 1 : static_cast<std::size_t>(type.back() - '0');
        const std::string_view bytes(reinterpret_cast<const char*>(values.data()),
                                     values.size() * sizeof(float));
        return accessor(view(bytes), 5126, values.size() / width, type);
    }

    int indices(const std::vector<std::uint16_t>& values) {
        const std::string_view bytes(reinterpret_cast<const char*>(values.data()),
                                     values.size() * sizeof(std::uint16_t));
        return accessor(view(bytes), 5123, values.size(), "SCALAR");
    }

    /// A triangle (0,0,0), (1,0,0), (0,1,0) as a mesh; attributes beyond POSITION come from the
    /// caller.
    int triangle(const nlohmann::json& attributes = nlohmann::json::object(), int material = -1) {
        nlohmann::json primitive{{"attributes", attributes}};
        primitive["attributes"]["POSITION"] = floats({0, 0, 0, 1, 0, 0, 0, 1, 0}, "VEC3");
        // Assimp wants to know how far a position reaches.
        json["accessors"].back().update({{"min", {0, 0, 0}}, {"max", {1, 1, 0}}});
        primitive["indices"] = indices({0, 1, 2});
        if (material >= 0)
            primitive["material"] = material;
        json["meshes"].push_back({{"name", "triangle"}, {"primitives", {primitive}}});
        return static_cast<int>(json["meshes"].size()) - 1;
    }

    int node(nlohmann::json node) {
        json["nodes"].push_back(std::move(node));
        return static_cast<int>(json["nodes"].size()) - 1;
    }

    void scene(const std::vector<int>& roots) {
        json["scenes"] = {{{"nodes", roots}}};
        json["scene"] = 0;
    }

    [[nodiscard]] std::string text() const {
        nlohmann::json whole = json;
        if (!data.empty() && !whole.contains("buffers"))
            whole["buffers"] = {{{"byteLength", data.size()},
                                 {"uri", "data:application/octet-stream;base64," + base64(data)}}};
        return whole.dump();
    }

    [[nodiscard]] std::string binary() const {
        nlohmann::json whole = json;
        whole["buffers"] = {{{"byteLength", data.size()}}};
        std::string jsonText = whole.dump();
        jsonText.resize((jsonText.size() + 3) / 4 * 4, ' ');
        std::string out("glTF", 4);
        const auto word = [&out](std::size_t value) {
            const auto narrow = static_cast<std::uint32_t>(value);
            std::array<char, 4> bytes{};
            std::memcpy(bytes.data(), &narrow, sizeof narrow);
            out.append(bytes.data(), bytes.size());
        };
        word(2);
        word(12 + 8 + jsonText.size() + 8 + data.size());
        word(jsonText.size());
        out += "JSON" + jsonText;
        word(data.size());
        out += std::string("BIN\0", 4) + data;
        return out;
    }

    nlohmann::json json;
    std::string data;

private:
    int accessor(int view, int component, std::size_t count, const std::string& type) {
        json["accessors"].push_back(
            {{"bufferView", view}, {"componentType", component}, {"count", count}, {"type", type}});
        return static_cast<int>(json["accessors"].size()) - 1;
    }
};

} // namespace qor::import::testing
