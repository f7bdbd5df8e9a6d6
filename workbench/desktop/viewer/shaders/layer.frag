uniform sampler2D layer; // premultiplied, of the size of the target

out vec4 pixel;

void main() {
    pixel = texelFetch(layer, ivec2(gl_FragCoord.xy), 0);
}
