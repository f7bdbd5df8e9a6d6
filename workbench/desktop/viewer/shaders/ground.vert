uniform mat4 viewProjection;
uniform vec3 origin;
uniform vec3 across; // half a side
uniform vec3 along;

out vec2 at; // -1..1 on the plane
out vec3 atPosition;

void main() {
    at = vec2((gl_VertexID & 1) == 0 ? -1.0 : 1.0, (gl_VertexID & 2) == 0 ? -1.0 : 1.0);
    atPosition = origin + across * at.x + along * at.y;
    gl_Position = viewProjection * vec4(atPosition, 1.0);
}
