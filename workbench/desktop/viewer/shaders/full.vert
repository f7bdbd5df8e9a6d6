// One triangle over the whole viewport.
out vec2 at;

void main() {
    at = vec2(gl_VertexID == 1 ? 2.0 : 0.0, gl_VertexID == 2 ? 2.0 : 0.0);
    gl_Position = vec4(at * 2.0 - 1.0, 0.0, 1.0);
}
