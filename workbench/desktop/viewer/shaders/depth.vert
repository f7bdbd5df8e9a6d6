layout(location = 0) in vec3 position;
layout(location = 5) in vec4 row0;
layout(location = 6) in vec4 row1;
layout(location = 7) in vec4 row2;

uniform mat4 viewProjection;

void main() {
    vec4 local = vec4(position, 1.0);
    gl_Position = viewProjection * vec4(dot(row0, local), dot(row1, local), dot(row2, local), 1.0);
}
