#include "workbench/imaging/PictFile.h"

#include "workbench/imaging/BigEndian.h"

#include <algorithm>
#include <cstddef>

// Numbers of operations and the layout of their data: Inside Macintosh, Imaging With QuickDraw
// (1994), chapter 4 and appendix A.
namespace qor::imaging {

namespace {

enum : std::uint64_t {
    clipRegion = 0x0001,
    packedRows = 0x0098,
    packedRegion = 0x0099,
    directRows = 0x009A,
    directRegion = 0x009B,
    longComment = 0x00A1,
    endOfPicture = 0x00FF,
};

/// Operations with data of a fixed length that stand around pixel maps.
constexpr struct {
    std::uint64_t operation;
    std::size_t size;
} fixed[] = {{0x0000, 0}, {0x0002, 8}, {0x0003, 2}, {0x0004, 1}, {0x0005, 2}, {0x0006, 4},
             {0x0007, 4}, {0x0008, 2}, {0x0009, 8}, {0x000A, 8}, {0x000B, 4}, {0x000C, 4},
             {0x000D, 2}, {0x000E, 4}, {0x000F, 4}, {0x0010, 8}, {0x0011, 2}, {0x0015, 2},
             {0x0016, 2}, {0x001A, 6}, {0x001B, 6}, {0x001C, 0}, {0x001D, 6}, {0x001E, 0},
             {0x001F, 6}, {0x00A0, 2}, {0x0C00, 24}};

/// Where the rows of one pixel map lie, and how they are packed.
struct Pixels {
    std::size_t at = 0;
    std::size_t rowSize = 0; ///< unpacked
    std::size_t rows = 0;
    std::uint64_t packing = 0;
    std::uint64_t channels = 0;
    bool isPlain = false;
};

/// Goes through the operations of a picture. Positions beyond the end mean that it is cut short.
class Picture {
public:
    explicit Picture(std::string_view bytes) : bytes_(bytes) { walk(); }

    [[nodiscard]] bool isWhole() const { return at_ <= bytes_.size() && ended_; }

    [[nodiscard]] const std::vector<Pixels>& maps() const { return maps_; }

    /// Bytes of the next packed row; moves \p at behind it.
    [[nodiscard]] std::string_view takeRow(const Pixels& map, std::size_t& at) const {
        constexpr std::size_t longestWithByte = 250;
        const std::size_t countSize = map.rowSize > longestWithByte ? 2 : 1;
        const std::size_t begin = std::min(at + countSize, bytes_.size());
        const std::size_t size = numberAt(bytes_, at, countSize);
        at += countSize + size;
        return bytes_.substr(begin, size);
    }

private:
    static constexpr std::size_t start = 512 + 10; ///< an empty head, a size and a frame

    void walk();
    bool step(std::uint64_t operation);

    void skipRegion() { at_ += std::max<std::uint64_t>(numberAt(bytes_, at_, 2), 2); }

    void takePacked(bool hasRegion);
    void takeDirect(bool hasRegion);
    void skipRows(Pixels map, bool hasRegion);

    std::string_view bytes_;
    std::size_t at_ = start;
    bool ended_ = false;
    std::vector<Pixels> maps_;
};

void Picture::walk() {
    while (!ended_ && at_ + 2 <= bytes_.size()) {
        at_ += at_ % 2; // operations stand on even places
        const std::uint64_t operation = numberAt(bytes_, at_, 2);
        at_ += 2;
        if (!step(operation))
            ended_ = true; // what follows is not known here: it is taken to be whole
    }
}

bool Picture::step(std::uint64_t operation) {
    switch (operation) {
    case endOfPicture:
        return false;
    case clipRegion:
        skipRegion();
        return true;
    case packedRows:
    case packedRegion:
        takePacked(operation == packedRegion);
        return true;
    case directRows:
    case directRegion:
        takeDirect(operation == directRegion);
        return true;
    case longComment:
        at_ += 4 + numberAt(bytes_, at_ + 2, 2);
        return true;
    default:
        const auto* found = std::ranges::find_if(
            fixed, [&](const auto& one) { return one.operation == operation; });
        if (found == std::end(fixed))
            return false;
        at_ += found->size;
        return true;
    }
}

constexpr std::size_t rectangle = 8;
constexpr std::size_t placing = rectangle + rectangle + 2; ///< from, to, mode

std::size_t rowsOf(std::string_view bytes, std::size_t bounds) {
    return (numberAt(bytes, bounds + 4, 2) - numberAt(bytes, bounds, 2)) & 0xFFFFU;
}

void Picture::takePacked(bool hasRegion) {
    constexpr std::size_t bitMap = 2 + rectangle;
    constexpr std::size_t pixelMap = bitMap + 36;
    const std::uint64_t rowField = numberAt(bytes_, at_, 2);
    Pixels map;
    map.rowSize = rowField & 0x3FFFU;
    map.rows = rowsOf(bytes_, at_ + 2);
    if ((rowField & 0x8000U) == 0) {
        at_ += bitMap;
    } else {
        constexpr std::size_t entry = 8;
        at_ += pixelMap + entry;
        at_ += entry * (numberAt(bytes_, at_ - 2, 2) + 1); // the colours
    }
    constexpr std::size_t leastPacked = 8;
    map.isPlain = map.rowSize < leastPacked;
    skipRows(map, hasRegion);
}

void Picture::takeDirect(bool hasRegion) {
    constexpr std::size_t pixelMap = 50;
    constexpr std::size_t leastPacked = 8;
    Pixels map;
    map.rowSize = numberAt(bytes_, at_ + 4, 2) & 0x7FFFU;
    map.rows = rowsOf(bytes_, at_ + 6);
    map.packing = numberAt(bytes_, at_ + 16, 2);
    map.channels = numberAt(bytes_, at_ + 34, 2);
    map.isPlain = map.rowSize < leastPacked || map.packing == 1 || map.packing == 2;
    if (map.packing == 2)
        map.rowSize = map.rowSize / 4 * 3; // without the unused channel
    at_ += pixelMap;
    skipRows(map, hasRegion);
}

void Picture::skipRows(Pixels map, bool hasRegion) {
    at_ += placing;
    if (hasRegion)
        skipRegion();
    map.at = at_;
    maps_.push_back(map);
    if (map.isPlain) {
        at_ += map.rowSize * map.rows;
        return;
    }
    for (std::size_t row = 0; row < map.rows && at_ < bytes_.size(); ++row)
        static_cast<void>(takeRow(map, at_));
}

/// Undoes the run lengths of one row until \p size bytes are there: a count below 128 is followed
/// by one byte more than it says, one above by a byte that stands 257 less the count times.
std::vector<std::uint8_t> unpack(std::string_view packed, std::size_t size) {
    constexpr std::size_t nothing = 128;
    std::vector<std::uint8_t> row;
    for (std::size_t i = 0; i < packed.size() && row.size() < size;) {
        const auto count = static_cast<std::uint8_t>(packed[i++]);
        if (count < nothing) {
            const std::string_view plain = packed.substr(i, count + 1U);
            row.insert(row.end(), plain.begin(), plain.end());
            i += plain.size();
        } else if (count > nothing && i < packed.size()) {
            row.insert(row.end(), 257U - count, static_cast<std::uint8_t>(packed[i++]));
        }
    }
    row.resize(size, 0xFF);
    return row;
}

} // namespace

bool isWholePict(std::string_view bytes) {
    return Picture(bytes).isWhole();
}

std::optional<std::vector<std::uint8_t>>
alphaOfPict(std::string_view bytes, std::size_t width, std::size_t height) {
    constexpr std::uint64_t byChannel = 4; // the way of packing in which channels follow each other
    const Picture picture(bytes);
    if (picture.maps().size() != 1)
        return std::nullopt;
    const Pixels& map = picture.maps().front();
    if (map.isPlain || map.packing != byChannel || map.channels != 4 || map.rows != height ||
        map.rowSize != width * 4)
        return std::nullopt;
    std::vector<std::uint8_t> alpha;
    alpha.reserve(width * height);
    std::size_t at = map.at;
    for (std::size_t row = 0; row < height; ++row) {
        const std::vector<std::uint8_t> first = unpack(picture.takeRow(map, at), width);
        alpha.insert(alpha.end(), first.begin(), first.end());
    }
    return alpha;
}

} // namespace qor::imaging
