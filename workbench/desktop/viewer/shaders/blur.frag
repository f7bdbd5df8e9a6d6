in vec2 at;

uniform sampler2D source;
uniform vec2 texel;   // along the direction of the blur
uniform bool isDepth; // first pass: depths become nearness to the ground
uniform float reach;  // fall of the nearness over the depth range

out vec4 pixel;

float value(vec2 place) {
    float read = texture(source, place).r;
    return isDepth ? (read >= 1.0 ? 0.0 : exp(-reach * read)) : read;
}

void main() {
    const int radius = 10;
    float sum = 0.0;
    float weights = 0.0;
    for (int i = -radius; i <= radius; ++i) {
        float weight = exp(-float(i * i) / 40.0);
        sum += weight * value(at + texel * float(i));
        weights += weight;
    }
    pixel = vec4(sum / weights);
}
