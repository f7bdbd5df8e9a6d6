#include "workbench/engine/core/Mesh.h"

#include "workbench/engine/core/Embree.h"

#include <atomic>
#include <limits>
#include <mutex>
#include <string>

namespace qor::engine {

namespace {

std::atomic<std::uint64_t> _lastIdentity{0};

/// Coordinates beyond this are taken for damage: their squares would overflow.
constexpr float maxCoordinate = 1e15F;

bool isUsable(const Vec3& p) {
    return isFinite(p) && std::abs(p.x) < maxCoordinate && std::abs(p.y) < maxCoordinate &&
           std::abs(p.z) < maxCoordinate;
}

std::string countMessage(const char* what, std::size_t got, std::size_t wanted) {
    return "mesh: " + std::to_string(got) + " " + what + " where " + std::to_string(wanted) +
           " are needed";
}

Result<Done> check(const MeshData& data) {
    const std::size_t corners = data.positions.size();
    if (!data.normals.empty() && data.normals.size() != corners)
        return Error{ErrorCode::invalidInput,
                     countMessage("normals", data.normals.size(), corners)};
    if (!data.textureCoordinates.empty() && data.textureCoordinates.size() != corners)
        return Error{ErrorCode::invalidInput,
                     countMessage("texture coordinates", data.textureCoordinates.size(), corners)};
    if (!data.secondTextureCoordinates.empty() && data.secondTextureCoordinates.size() != corners)
        return Error{ErrorCode::invalidInput,
                     countMessage("second texture coordinates",
                                  data.secondTextureCoordinates.size(), corners)};
    if (!data.colors.empty() && data.colors.size() != corners)
        return Error{ErrorCode::invalidInput, countMessage("colors", data.colors.size(), corners)};
    if (!data.slots.empty() && data.slots.size() != data.triangles.size())
        return Error{ErrorCode::invalidInput,
                     countMessage("slots", data.slots.size(), data.triangles.size())};
    if (data.triangles.size() >= std::numeric_limits<std::uint32_t>::max())
        return Error{ErrorCode::invalidInput,
                     "mesh: too many triangles: " + std::to_string(data.triangles.size())};
    for (std::size_t i = 0; i < data.triangles.size(); ++i)
        for (const std::uint32_t corner : data.triangles[i])
            if (corner >= corners)
                return Error{ErrorCode::invalidInput,
                             "mesh: triangle " + std::to_string(i) + " uses position " +
                                 std::to_string(corner) + " of " + std::to_string(corners)};
    return Done{};
}

/// A place from which no triangle with this corner can be hit.
Vec3 unusablePosition() {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    return {nan, nan, nan};
}

} // namespace

struct Mesh::Lazy {
    std::mutex mutex;
    std::atomic<const MeshStructure*> ready{nullptr};
    std::unique_ptr<const MeshStructure> structure;
};

Result<MeshPtr> Mesh::create(MeshData data) {
    const Result<Done> checked = check(data);
    if (!checked)
        return checked.error();
    return MeshPtr(new Mesh(std::move(data)));
}

Mesh::Mesh(MeshData data)
    : data_(std::move(data)), identity_(++_lastIdentity), lazy_(std::make_unique<Lazy>()) {
    // The ray tracing structure shares the positions and reads each as four floats; packets read
    // normals so, too.
    for (std::vector<Vec3>* vectors : {&data_.positions, &data_.normals})
        if (!vectors->empty() && vectors->capacity() == vectors->size())
            vectors->reserve(vectors->size() + 1);
    inspect();
}

Mesh::~Mesh() = default;

void Mesh::inspect() {
    for (Vec3& p : data_.positions)
        if (!isUsable(p)) {
            p = unusablePosition();
            clean_ = false;
        }
    const float huge = std::numeric_limits<float>::max();
    lower_ = {huge, huge, huge};
    upper_ = -lower_;
    for (const auto& triangle : data_.triangles) {
        const Vec3& a = data_.positions[triangle[0]];
        const Vec3& b = data_.positions[triangle[1]];
        const Vec3& c = data_.positions[triangle[2]];
        if (!(length(cross(b - a, c - a)) > 0.0F)) {
            clean_ = false;
            continue;
        }
        for (const Vec3& p : {a, b, c}) {
            lower_ = {std::min(lower_.x, p.x), std::min(lower_.y, p.y), std::min(lower_.z, p.z)};
            upper_ = {std::max(upper_.x, p.x), std::max(upper_.y, p.y), std::max(upper_.z, p.z)};
        }
    }
    for (const std::uint16_t slot : data_.slots)
        slotCount_ = std::max<std::size_t>(slotCount_, slot + std::size_t{1});
}

std::size_t Mesh::memory() const {
    return data_.positions.size() * sizeof(Vec3) + data_.normals.size() * sizeof(Vec3) +
           data_.textureCoordinates.size() * sizeof(Vec2) +
           data_.secondTextureCoordinates.size() * sizeof(Vec2) +
           data_.colors.size() * sizeof(data_.colors[0]) +
           data_.triangles.size() * sizeof(data_.triangles[0]) +
           data_.slots.size() * sizeof(std::uint16_t);
}

const MeshStructure& Mesh::structure() const {
    if (const MeshStructure* ready = lazy_->ready.load(std::memory_order_acquire))
        return *ready;
    const std::scoped_lock lock(lazy_->mutex);
    if (!lazy_->structure) {
        lazy_->structure = std::make_unique<MeshStructure>(data_);
        lazy_->ready.store(lazy_->structure.get(), std::memory_order_release);
    }
    return *lazy_->structure;
}

} // namespace qor::engine
