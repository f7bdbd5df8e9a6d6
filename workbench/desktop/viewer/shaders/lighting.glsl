// Light as the viewer has it: up to two lights, ambient, and surroundings that shiny things reflect. Colours are linear.
// A light's factor is what a white matt surface shows that faces it.
uniform int lightCount;
uniform vec4 lightPosition[2];  // w 1: a place; w 0: the direction towards the light
uniform vec3 lightDirection[2]; // the way the light goes
uniform vec2 lightCone[2];      // cosines of the half angles where a spot has ended and where it begins to
uniform vec3 lightDiffuse[2];
uniform vec3 lightSpecular[2];
uniform vec3 ambient;
uniform float surroundings; // how bright what is reflected is
uniform vec3 vertical;      // up, of length 1
uniform vec3 ahead;         // level, away from the eye
uniform vec3 aside;         // level, to the right

const float pi = 3.14159265;

vec3 towardsLight(int i, vec3 position) {
    return normalize(lightPosition[i].xyz - position * lightPosition[i].w);
}

float conePart(int i, vec3 toLight) {
    return smoothstep(lightCone[i].x, lightCone[i].y, dot(-toLight, lightDirection[i]));
}

// More from above than from below; 1 on average, and exactly 1 for an upright wall.
vec3 fill(vec3 normal) {
    return ambient * (1.0 + 0.3 * dot(normal, vertical));
}

// A photographer's studio that turns with the eye: dark floor, bright ceiling, a large soft light above to the left, a
// strip to the right. The rougher the surface, the softer the borders.
float studio(vec3 direction, float roughness) {
    float height = dot(direction, vertical);
    float soft = 0.06 + 0.9 * roughness;
    float room = mix(0.22, 0.55, smoothstep(-soft, soft, height));
    room += 0.35 * smoothstep(0.1 - soft, 0.9 + soft, height);
    vec3 box = normalize(vertical * 0.75 - aside * 0.55 - ahead * 0.35);
    vec3 strip = normalize(aside * 0.85 + vertical * 0.2 - ahead * 0.45);
    float glow = 1.1 * smoothstep(0.8 - soft, 0.86 + soft, dot(direction, box));
    glow += 0.7 * smoothstep(0.88 - soft, 0.92 + soft, dot(direction, strip));
    return room + glow * mix(1.0, 0.45, roughness);
}

vec3 coded(vec3 linear) {
    return mix(12.92 * linear, 1.055 * pow(max(linear, 0.0031308), vec3(1.0 / 2.4)) - 0.055,
               step(0.0031308, linear));
}

// What is lit: values above 0.8 are bent so that highlights keep their shape; below, nothing changes.
vec3 shownColor(vec3 linear) {
    const float knee = 0.8;
    vec3 over = max(linear - knee, 0.0) / (1.0 - knee);
    return coded(min(linear, knee) + (1.0 - knee) * (1.0 - exp(-over)));
}
