in vec3 atPosition;
in vec3 atNormal;
in vec4 atColor;
in float atHighlight;

uniform vec4 eye; // w 1: a place; w 0: the direction towards it
uniform bool hasNormals;
uniform vec4 baseColor;
uniform vec4 finish; // metallic, roughness, clearcoat, clearcoat roughness
uniform vec3 emission;
uniform float reflectance; // of a dielectric that is looked at straight
uniform float opacity;     // what transmission leaves
uniform float alphaCutoff; // below 0: none
uniform bool unlit;
uniform vec3 highlightColor;

out vec4 pixel;

#ifdef TEXTURES
in vec2 atUv0;
in vec2 atUv1;
uniform bool used[5];   // base colour, metallic and roughness, normal, occlusion, emission
uniform int uvSet[5];
uniform vec4 uvTurn[5]; // columns of rotation and scale
uniform vec2 uvMove[5];
uniform float normalScale;
uniform float occlusionStrength;
uniform sampler2D baseColorMap;
uniform sampler2D finishMap;
uniform sampler2D normalMap;
uniform sampler2D occlusionMap;
uniform sampler2D emissionMap;

vec2 uvOf(int slot) {
    vec2 uv = uvSet[slot] == 0 ? atUv0 : atUv1;
    return uvTurn[slot].xy * uv.x + uvTurn[slot].zw * uv.y + uvMove[slot];
}

// Tangents from the derivatives of the texture coordinates.
// Method: Schueler 2013, "Followup: Normal Mapping Without Precomputed Tangents".
vec3 bent(vec3 normal) {
    vec2 uv = uvOf(2);
    vec3 alongX = dFdx(atPosition);
    vec3 alongY = dFdy(atPosition);
    vec2 uvX = dFdx(uv);
    vec2 uvY = dFdy(uv);
    vec3 acrossY = cross(alongY, normal);
    vec3 acrossX = cross(normal, alongX);
    vec3 tangent = acrossY * uvX.x + acrossX * uvY.x;
    vec3 bitangent = acrossY * uvX.y + acrossX * uvY.y;
    float scale = inversesqrt(max(max(dot(tangent, tangent), dot(bitangent, bitangent)), 1e-30));
    vec3 texel = texture(normalMap, uv).xyz * 2.0 - 1.0;
    texel.xy *= normalScale;
    // Rows of a picture go down, the second tangent goes up.
    return normalize(tangent * scale * texel.x - bitangent * scale * texel.y + normal * texel.z);
}
#endif

// The normal on the side from which the surface is seen. The side is that of the triangle, not of the shading normal,
// which at outlines may look away.
vec3 seenNormal() {
    vec3 facet = cross(dFdx(atPosition), dFdy(atPosition));
    vec3 back = eye.xyz - atPosition * eye.w;
    facet *= dot(facet, back) < 0.0 ? -1.0 : 1.0;
    vec3 normal = hasNormals && dot(atNormal, atNormal) > 0.0 ? atNormal : facet;
    return normalize(dot(normal, facet) < 0.0 ? -normal : normal);
}

// Method: Walter et al. 2007 (distribution), Hammon 2017 (visibility, "PBR Diffuse Lighting for GGX+Smith
// Microsurfaces").
float ggx(float nh, float nl, float nv, float alpha) {
    float squared = alpha * alpha;
    float base = nh * nh * (squared - 1.0) + 1.0;
    float visibility = 0.5 / max(mix(2.0 * nl * nv, nl + nv, alpha), 1e-4);
    return squared / (pi * base * base) * visibility;
}

// Part of the surroundings that a surface throws back, as a factor on its reflectance and an addition.
// Method: Karis 2014, "Physically Based Shading on Mobile".
vec2 reflectedPart(float roughness, float nv) {
    vec4 r = roughness * vec4(-1.0, -0.0275, -0.572, 0.022) + vec4(1.0, 0.0425, 1.04, -0.04);
    float a = min(r.x * r.x, exp2(-9.28 * nv)) * r.x + r.y;
    return vec2(-1.04, 1.04) * a + r.zw;
}

vec3 fresnel(vec3 straight, float cosine) {
    return straight + (1.0 - straight) * pow(1.0 - cosine, 5.0);
}

void main() {
    vec4 base = baseColor * atColor;
    vec3 glow = emission;
    float metallic = finish.x;
    float roughness = finish.y;
    float open = 1.0;
    vec3 normal = seenNormal();
#ifdef TEXTURES
    if (used[0])
        base *= texture(baseColorMap, uvOf(0));
    if (used[1]) {
        vec4 texel = texture(finishMap, uvOf(1));
        metallic *= texel.b;
        roughness *= texel.g;
    }
    if (used[2])
        normal = bent(normal);
    if (used[3])
        open = mix(1.0, texture(occlusionMap, uvOf(3)).r, occlusionStrength);
    if (used[4])
        glow *= texture(emissionMap, uvOf(4)).rgb;
#endif
    if (base.a < alphaCutoff)
        discard;
    vec3 back = normalize(eye.xyz - atPosition * eye.w);
    float nv = clamp(dot(normal, back), 1e-3, 1.0);
    roughness = clamp(roughness, 0.06, 1.0);
    vec3 straight = mix(vec3(reflectance), base.rgb, metallic);
    vec3 matt = base.rgb * (1.0 - metallic);

    vec3 light = matt * fill(normal) * open;
    vec3 mirrored = reflect(-back, normal);
    vec2 part = reflectedPart(roughness, nv);
    vec3 gloss = (straight * part.x + part.y) * (surroundings * studio(mirrored, roughness) * open);
    float coat = finish.z;
    float coatFresnel = coat * (0.04 + 0.96 * pow(1.0 - nv, 5.0));
    gloss = gloss * (1.0 - coatFresnel) + coatFresnel * surroundings * studio(mirrored, finish.w);
    for (int i = 0; i < lightCount; ++i) {
        vec3 toLight = towardsLight(i, atPosition);
        float nl = dot(normal, toLight);
        if (nl <= 0.0)
            continue;
        float share = nl * conePart(i, toLight);
        vec3 halfway = normalize(toLight + back);
        float nh = clamp(dot(normal, halfway), 0.0, 1.0);
        float hv = clamp(dot(halfway, back), 0.0, 1.0);
        light += matt * lightDiffuse[i] * share;
        gloss += lightSpecular[i] * (pi * share) *
                 (fresnel(straight, hv) * ggx(nh, nl, nv, roughness * roughness) +
                  coat * 0.04 * ggx(nh, nl, nv, max(finish.w * finish.w, 0.01)));
    }
    vec3 color = unlit ? base.rgb : light + gloss + glow;
    float tint = 0.92 * atHighlight;
    float shade = dot(light + gloss, vec3(0.2126, 0.7152, 0.0722));
    color = mix(color, highlightColor * (0.55 + 0.3 * nv + 0.6 * shade), tint);
    float alpha = base.a * opacity;
    // What is reflected is there however clear the glass is.
    alpha = max(alpha, clamp(max(max(gloss.r, gloss.g), gloss.b), 0.0, 1.0) * float(opacity < 1.0));
    alpha = mix(alpha, 1.0, tint);
    // A colour that no light changes is exact.
    pixel = vec4((unlit ? coded(color) : shownColor(color)) * alpha, alpha);
}
