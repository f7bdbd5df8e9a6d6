#include "workbench/document/product/tables/Bytes.h"
#include "workbench/document/product/tables/Database.h"
#include "workbench/document/product/tables/Load.h"
#include "workbench/document/product/tables/MaterialColumns.h"
#include "workbench/document/product/tables/RowReader.h"

#include <algorithm>
#include <string_view>

namespace qor::document::tables {

namespace {

TextureSlot slotOf(const std::string& name) {
    const auto names = textureSlotNames();
    const auto found = std::find(names.begin(), names.end(), std::string_view(name));
    if (found == names.end())
        damaged("a texture in the unknown place \"" + name + "\"");
    return static_cast<TextureSlot>(found - names.begin());
}

void loadTextureUses(sqlite3* database, Product& product) {
    Statement select(database, "SELECT material, slot, texture, uv_set, offset_u, offset_v, "
                               "scale_u, scale_v, rotation, wrap_u, wrap_v "
                               "FROM product_material_texture");
    while (select.step()) {
        const std::int32_t material = reference(select, 0);
        if (material < 0 || static_cast<std::size_t>(material) >= product.materials.size())
            damaged("a texture of no material");
        TextureUse use;
        use.texture = reference(select, 2);
        use.uvSet = static_cast<std::int32_t>(std::clamp<std::int64_t>(select.integer(3), -1, 2));
        use.offset = {select.real(4), select.real(5)};
        use.scale = {select.real(6), select.real(7)};
        use.rotation = select.real(8);
        use.wrapU = enumerator(select, 9, TextureWrap::ClampToEdge);
        use.wrapV = enumerator(select, 10, TextureWrap::ClampToEdge);
        product.materials[material].texture(slotOf(select.text(1))) = use;
    }
}

std::string materialSelect() {
    std::string sql = "SELECT id, name, alpha_mode, double_sided, unlit";
    for (const MaterialColumn& column : materialColumns())
        sql += std::string(", ") + column.name;
    return sql + " FROM product_material ORDER BY id";
}

} // namespace

void loadTextures(sqlite3* database, const LoadLimits& limits, bool pixels, Product& product) {
    Statement select(
        database,
        "SELECT id, name, width, height, length(pixels) FROM product_texture ORDER BY id");
    BlobReader reader(database, "product_texture", "pixels");
    while (select.step()) {
        expectRow("product_texture", select.integer(0), product.textures.size());
        Texture& texture = product.textures.emplace_back();
        texture.name = select.text(1);
        if (!pixels)
            continue;
        texture.width = count(select, 2);
        texture.height = count(select, 3);
        const auto bytes = static_cast<std::uint64_t>(select.integer(4));
        if (texture.width > 65535 || texture.height > 65535 || bytes > limits.fileSize ||
            bytes != std::uint64_t{4} * texture.width * texture.height)
            damaged("a texture whose pixels do not fill its size");
        texture.pixels.resize(bytes);
        if (bytes != 0)
            reader.read(select.integer(0), writableBytesOf(texture.pixels));
    }
}

void loadMaterials(sqlite3* database, Product& product) {
    Statement select(database, materialSelect());
    while (select.step()) {
        expectRow("product_material", select.integer(0), product.materials.size());
        Material& material = product.materials.emplace_back();
        material.name = select.text(1);
        material.alphaMode = enumerator(select, 2, AlphaMode::Blend);
        material.doubleSided = select.integer(3) != 0;
        material.unlit = select.integer(4) != 0;
        int column = 5;
        for (const MaterialColumn& number : materialColumns())
            number.value(material) = select.real(column++);
    }
    loadTextureUses(database, product);
}

} // namespace qor::document::tables
