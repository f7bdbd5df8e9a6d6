layout(location = 0) in vec3 position;
layout(location = 1) in vec3 normal;
layout(location = 2) in vec2 uv0;
layout(location = 3) in vec2 uv1;
layout(location = 4) in vec4 color;
layout(location = 5) in vec4 row0; // of the instance's matrix
layout(location = 6) in vec4 row1;
layout(location = 7) in vec4 row2;
layout(location = 8) in float highlight;

uniform mat4 viewProjection;
uniform vec4 clip;

out vec3 atPosition;
out vec3 atNormal;
out vec4 atColor;
out float atHighlight;
#ifdef TEXTURES
out vec2 atUv0;
out vec2 atUv1;
#endif

void main() {
    vec4 local = vec4(position, 1.0);
    atPosition = vec3(dot(row0, local), dot(row1, local), dot(row2, local));
    // Normals go with the inverse transposed matrix, which is the matrix of cofactors but for a factor.
    vec3 across = cross(row1.xyz, row2.xyz);
    float side = dot(row0.xyz, across) < 0.0 ? -1.0 : 1.0;
    atNormal = side * vec3(dot(across, normal), dot(cross(row2.xyz, row0.xyz), normal),
                           dot(cross(row0.xyz, row1.xyz), normal));
    atColor = vec4(pow(color.rgb, vec3(2.2)), color.a); // it is sRGB-coded
    atHighlight = highlight;
#ifdef TEXTURES
    atUv0 = uv0;
    atUv1 = uv1;
#endif
    gl_Position = viewProjection * vec4(atPosition, 1.0);
    gl_ClipDistance[0] = dot(clip, vec4(atPosition, 1.0));
}
