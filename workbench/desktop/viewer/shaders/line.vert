layout(location = 0) in vec3 position;
layout(location = 4) in vec4 color;

uniform mat4 viewProjection;
uniform vec2 halfSize; // of the viewport, pixels

out vec4 atColor;
out vec2 here;
flat out vec2 end;

void main() {
    gl_Position = viewProjection * vec4(position, 1.0);
    here = gl_Position.xy / max(gl_Position.w, 1e-6) * halfSize;
    end = here;
    atColor = color;
}
