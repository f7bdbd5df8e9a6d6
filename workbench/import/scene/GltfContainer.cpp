#include "workbench/import/scene/GltfContainer.h"

#include "workbench/import/model/ImportError.h"

#include <cstring>
#include <fstream>

namespace qor::import {

namespace {

constexpr std::uint32_t glbMagic = 0x46546C67;
constexpr std::uint32_t jsonChunk = 0x4E4F534A;
constexpr std::uint32_t binaryChunk = 0x004E4942;

std::uint32_t wordAt(std::span<const std::uint8_t> bytes, std::size_t offset) {
    if (offset + 4 > bytes.size())
        throw ImportError("the file is cut off");
    std::uint32_t word = 0;
    std::memcpy(&word, bytes.data() + offset, sizeof word);
    return word;
}

void appendWord(std::vector<std::uint8_t>& bytes, std::uint32_t word) {
    const std::size_t end = bytes.size();
    bytes.resize(end + sizeof word);
    std::memcpy(bytes.data() + end, &word, sizeof word);
}

template <typename Bytes>
void appendChunk(std::vector<std::uint8_t>& out,
                 std::uint32_t kind,
                 const Bytes& bytes,
                 std::uint8_t padding) {
    const std::size_t padded = (bytes.size() + 3) / 4 * 4;
    appendWord(out, static_cast<std::uint32_t>(padded));
    appendWord(out, kind);
    out.insert(out.end(), bytes.begin(), bytes.end());
    out.insert(out.end(), padded - bytes.size(), padding);
}

std::string_view base64Of(std::string_view uri) {
    if (!uri.starts_with("data:"))
        return {};
    const std::size_t comma = uri.find(',');
    if (comma == std::string_view::npos || !uri.substr(0, comma).ends_with(";base64"))
        throw ImportError("it holds a data URI that is not base64");
    std::string_view text = uri.substr(comma + 1);
    while (text.ends_with('='))
        text.remove_suffix(1);
    return text;
}

int base64Value(char c) {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::size_t value = alphabet.find(c);
    if (value == std::string_view::npos)
        throw ImportError("it holds a data URI with a character that is not base64");
    return static_cast<int>(value);
}

int hexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

GlbParts splitGlb(std::span<const std::uint8_t> bytes) {
    if (wordAt(bytes, 0) != glbMagic)
        throw ImportError("it is not binary glTF");
    if (wordAt(bytes, 4) != 2)
        throw ImportError("it is glTF of version " + std::to_string(wordAt(bytes, 4)) +
                          "; only version 2 is supported");
    if (wordAt(bytes, 8) > bytes.size())
        throw ImportError("the file is cut off: it claims " + std::to_string(wordAt(bytes, 8)) +
                          " bytes and has " + std::to_string(bytes.size()));
    GlbParts parts;
    for (std::size_t at = 12; at + 8 <= bytes.size();) {
        const std::uint32_t length = wordAt(bytes, at);
        const std::uint32_t kind = wordAt(bytes, at + 4);
        at += 8;
        if (length > bytes.size() - at)
            throw ImportError("a chunk claims more bytes than the file has");
        const auto chunk = bytes.subspan(at, length);
        if (kind == jsonChunk && parts.json.empty())
            parts.json.assign(chunk.begin(), chunk.end());
        else if (kind == binaryChunk && parts.chunk.empty())
            parts.chunk.assign(chunk.begin(), chunk.end());
        at += length;
    }
    return parts;
}

std::vector<std::uint8_t> joinGlb(const GlbParts& parts) {
    std::vector<std::uint8_t> out;
    out.reserve(parts.json.size() + parts.chunk.size() + 64);
    appendWord(out, glbMagic);
    appendWord(out, 2);
    appendWord(out, 0);
    appendChunk(out, jsonChunk, parts.json, ' ');
    if (!parts.chunk.empty())
        appendChunk(out, binaryChunk, parts.chunk, 0);
    const auto length = static_cast<std::uint32_t>(out.size());
    std::memcpy(out.data() + 8, &length, sizeof length);
    return out;
}

std::vector<std::uint8_t> readBytes(const std::filesystem::path& file) {
    const ImportError unreadable("\"" + file.filename().string() + "\" cannot be read");
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error) // also of pipes and devices: opening one may take for ever
        throw ImportError(unreadable);
    std::ifstream in(file, std::ios::binary);
    if (!in)
        throw ImportError(unreadable);
    std::vector<std::uint8_t> bytes(size);
    in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
    bytes.resize(static_cast<std::size_t>(in.gcount()));
    return bytes;
}

std::optional<std::vector<std::uint8_t>> dataUriBytes(std::string_view uri) {
    if (!uri.starts_with("data:"))
        return std::nullopt;
    const std::string_view text = base64Of(uri);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t bits = 0;
    int count = 0;
    for (const char c : text) {
        bits = bits << 6 | static_cast<std::uint32_t>(base64Value(c));
        count += 6;
        if (count < 8)
            continue;
        count -= 8;
        bytes.push_back(static_cast<std::uint8_t>(bits >> count));
    }
    return bytes;
}

std::optional<std::uint64_t> dataUriLength(std::string_view uri) {
    if (!uri.starts_with("data:"))
        return std::nullopt;
    return std::uint64_t{base64Of(uri).size()} * 3 / 4;
}

std::string percentDecoded(std::string_view uri) {
    std::string out;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        const int high = uri[i] == '%' && i + 2 < uri.size() ? hexValue(uri[i + 1]) : -1;
        const int low = high >= 0 ? hexValue(uri[i + 2]) : -1;
        if (low < 0) {
            out += uri[i];
            continue;
        }
        out += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return out;
}

} // namespace qor::import
