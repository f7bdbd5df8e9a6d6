in vec2 at;
in vec3 atPosition;

uniform vec3 normal;
uniform float opacity;
uniform float albedo;
uniform float below; // what is left of it when it is seen from below
uniform vec4 eye;
uniform mat4 shadowMatrix; // to the shadow map's texture coordinates and depth
uniform float shadowTexel;
uniform bool hasShadow;
uniform sampler2DShadow shadowMap;
uniform mat4 contactMatrix;
uniform bool hasContact;
uniform sampler2D contactMap;
uniform float reflectivity; // 0: nothing is mirrored
uniform vec2 corner;        // of the viewport, pixels
uniform sampler2D mirrorMap; // what is mirrored at each pixel of the viewport, premultiplied

out vec4 pixel;

// How much of the first light arrives: sixteen places on a spiral, each of them filtered.
float lit() {
    if (!hasShadow)
        return 1.0;
    vec3 place = (shadowMatrix * vec4(atPosition, 1.0)).xyz;
    if (any(lessThan(place.xy, vec2(0.0))) || any(greaterThan(place.xy, vec2(1.0))))
        return 1.0;
    float sum = 0.0;
    for (int i = 0; i < 16; ++i) {
        float turn = float(i) * 2.39996;
        float radius = 3.2 * sqrt((float(i) + 0.5) / 16.0);
        vec2 offset = vec2(cos(turn), sin(turn)) * (radius * shadowTexel);
        sum += texture(shadowMap, vec3(place.xy + offset, place.z));
    }
    return sum / 16.0;
}

float contact() {
    if (!hasContact)
        return 0.0;
    vec2 place = (contactMatrix * vec4(atPosition, 1.0)).xy;
    if (any(lessThan(place, vec2(0.0))) || any(greaterThan(place, vec2(1.0))))
        return 0.0;
    return texture(contactMap, place).r;
}

void main() {
    float distance = length(at);
    float fade = 1.0 - smoothstep(0.4, 1.0, distance);
    vec3 back = eye.xyz - atPosition * eye.w;
    float side = dot(back, normal) > 0.0 ? 1.0 : below;
    float arriving = lit();
    vec3 full = ambient;
    vec3 color = ambient;
    for (int i = 0; i < lightCount; ++i) {
        vec3 toLight = towardsLight(i, atPosition);
        vec3 share = lightDiffuse[i] * (max(dot(normal, toLight), 0.0) * conePart(i, toLight));
        full += share;
        color += share * (i == 0 ? arriving : 1.0);
    }
    float dark = 1.0 - 0.7 * contact();
    color *= dark;
    // A ground that is there shows its shaded colour; one that is not still takes the shadow.
    float loss = 1.0 - dot(color, vec3(1.0)) / max(dot(full, vec3(1.0)), 1e-4);
    float plane = opacity * fade * side;
    float shade = 0.55 * loss * fade * side;
    float alpha = plane + shade * (1.0 - plane);
    vec4 mirrored = vec4(0.0);
    if (reflectivity > 0.0)
        mirrored = texelFetch(mirrorMap, ivec2(gl_FragCoord.xy - corner), 0) * (reflectivity * fade);
    pixel = mirrored + (1.0 - mirrored.a) * vec4(shownColor(albedo * color) * plane, alpha);
}
