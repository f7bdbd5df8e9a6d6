in vec2 at;

uniform vec3 top; // sRGB
uniform vec3 bottom;

out vec4 pixel;

// Noise of half a step hides the bands that 256 levels make.
// Method: Jimenez 2014, "Next Generation Post Processing in Call of Duty: Advanced Warfare", interleaved gradient noise.
float noise() {
    return fract(52.9829189 * fract(dot(gl_FragCoord.xy, vec2(0.06711056, 0.00583715)))) - 0.5;
}

void main() {
    float part = smoothstep(0.0, 1.0, at.y);
    float grain = top == bottom ? 0.0 : noise() / 255.0;
    pixel = vec4(mix(bottom, top, part) + grain, 1.0);
}
