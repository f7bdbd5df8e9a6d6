#include "workbench/import/scene/SceneAnimations.h"

#include "workbench/import/scene/GltfCheck.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qor::import {

using document::Track;
using document::TrackInterpolation;
using document::TrackTarget;
using nlohmann::json;

namespace {

constexpr auto pathNames = std::to_array<const char*>({"translation", "rotation", "scale"});

TrackInterpolation interpolationOf(const json& animation, std::int32_t node, TrackTarget target) {
    const json& samplers = arrayOf(animation, "samplers");
    for (const json& channel : arrayOf(animation, "channels")) {
        const json& aim = objectOf(channel, "target");
        if (static_cast<std::int32_t>(numberOf(aim, "node", -1)) != node ||
            stringOf(aim, "path") != pathNames[static_cast<std::size_t>(target)])
            continue;
        const auto sampler = static_cast<std::size_t>(numberOf(channel, "sampler", 0));
        if (stringOf(samplers[sampler], "interpolation") == "STEP")
            return TrackInterpolation::Step;
    }
    return TrackInterpolation::Linear;
}

void append(std::vector<float>& out, const document::Vector3& v) {
    for (const double number : v)
        out.push_back(static_cast<float>(number));
}

void appendValue(const Axes& axes,
                 TrackTarget target,
                 const aiVector3D& v,
                 std::vector<float>& out) {
    const document::Vector3 value{v.x, v.y, v.z};
    append(out, target == TrackTarget::Translation ? axes.point(value) : axes.factors(value));
}

void appendValue(const Axes& axes,
                 TrackTarget /*target*/,
                 const aiQuaternion& q,
                 std::vector<float>& out) {
    append(out, axes.direction({q.x, q.y, q.z}));
    out.push_back(q.w);
}

bool areUsable(const Track& track) {
    const auto finite = [](float value) {
        return std::isfinite(value);
    };
    return !track.times.empty() && std::all_of(track.times.begin(), track.times.end(), finite) &&
           std::all_of(track.values.begin(), track.values.end(), finite) &&
           std::is_sorted(track.times.begin(), track.times.end());
}

class ChannelReader {
public:
    ChannelReader(const Axes& axes,
                  double secondsPerTick,
                  const json& source,
                  document::Animation& animation)
        : axes_(axes), secondsPerTick_(secondsPerTick), source_(source), animation_(animation) {}

    void read(const aiNodeAnim& channel, std::int32_t number, std::int32_t node) {
        readKeys(channel.mPositionKeys, channel.mNumPositionKeys, TrackTarget::Translation, number,
                 node);
        readKeys(channel.mRotationKeys, channel.mNumRotationKeys, TrackTarget::Rotation, number,
                 node);
        readKeys(channel.mScalingKeys, channel.mNumScalingKeys, TrackTarget::Scale, number, node);
    }

private:
    template <typename KeyType>
    void readKeys(const KeyType* keys,
                  unsigned count,
                  TrackTarget target,
                  std::int32_t number,
                  std::int32_t node) {
        Track track;
        track.node = node;
        track.target = target;
        track.interpolation = interpolationOf(source_, number, target);
        for (unsigned i = 0; i < count; ++i) {
            track.times.push_back(static_cast<float>(keys[i].mTime * secondsPerTick_));
            appendValue(axes_, target, keys[i].mValue, track.values);
        }
        if (areUsable(track))
            animation_.tracks.push_back(std::move(track));
    }

    const Axes& axes_;
    double secondsPerTick_;
    const json& source_;
    document::Animation& animation_;
};

} // namespace

void addSceneAnimations(const aiScene& scene,
                        const GltfFile& gltf,
                        const Axes& axes,
                        const std::vector<std::int32_t>& nodeOf,
                        document::Product& product) {
    const json& sources = arrayOf(gltf.root(), "animations");
    for (unsigned i = 0; i < scene.mNumAnimations && i < sources.size(); ++i) {
        const aiAnimation& source = *scene.mAnimations[i];
        document::Animation animation;
        animation.name = stringOf(sources[i], "name");
        const double ticks = source.mTicksPerSecond > 0 ? source.mTicksPerSecond : 1000;
        ChannelReader reader(axes, 1 / ticks, sources[i], animation);
        for (unsigned c = 0; c < source.mNumChannels; ++c) {
            const aiNodeAnim& channel = *source.mChannels[c];
            const std::int32_t number = GltfFile::indexFromName(channel.mNodeName.C_Str());
            if (number >= 0 && static_cast<std::size_t>(number) < nodeOf.size() &&
                nodeOf[number] != document::none)
                reader.read(channel, number, nodeOf[number]);
        }
        if (!animation.tracks.empty())
            product.animations.push_back(std::move(animation));
    }
}

} // namespace qor::import
