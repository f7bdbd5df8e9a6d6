in vec2 at;

uniform sampler2D image;
uniform bool hasAlpha;

out vec4 pixel;

void main() {
    vec4 texel = texture(image, at);
    float alpha = hasAlpha ? texel.a : 1.0;
    pixel = vec4(texel.rgb * alpha, alpha);
}
