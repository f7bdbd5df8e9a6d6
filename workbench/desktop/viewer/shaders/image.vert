uniform vec4 place;  // left, top, right, bottom in pixels from the top left
uniform vec4 source; // the same of the picture, 0..1
uniform vec2 size;   // of the target

out vec2 at;

void main() {
    vec2 corner = vec2((gl_VertexID & 1) == 0 ? 0.0 : 1.0, (gl_VertexID & 2) == 0 ? 0.0 : 1.0);
    at = mix(source.xy, source.zw, corner);
    vec2 pixel = mix(place.xy, place.zw, corner);
    gl_Position = vec4(pixel.x / size.x * 2.0 - 1.0, 1.0 - pixel.y / size.y * 2.0, 0.0, 1.0);
}
