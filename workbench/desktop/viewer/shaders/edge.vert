layout(location = 0) in vec3 position;
layout(location = 5) in vec4 row0;
layout(location = 6) in vec4 row1;
layout(location = 7) in vec4 row2;
layout(location = 8) in float highlight;

uniform mat4 viewProjection;
uniform float pixelsByMm; // at depth 1, or at every depth of a parallel projection
uniform float spacing;    // mean distance of the mesh's edges, millimetres

out float strength;
out float atHighlight;

void main() {
    vec4 local = vec4(position, 1.0);
    vec3 place = vec3(dot(row0, local), dot(row1, local), dot(row2, local));
    gl_Position = viewProjection * vec4(place, 1.0);
    // Edges that come too close to each other would blacken what they belong to.
    strength = smoothstep(1.5, 7.0, spacing * length(row0.xyz) * pixelsByMm / gl_Position.w);
    atHighlight = highlight;
}
