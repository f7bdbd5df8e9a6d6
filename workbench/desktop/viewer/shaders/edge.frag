in float strength;
in float atHighlight;

uniform vec4 edgeColor; // sRGB
uniform vec3 highlightEdgeColor;

out vec4 pixel;

void main() {
    vec4 color = mix(edgeColor, vec4(highlightEdgeColor, 1.0), atHighlight);
    float alpha = color.a * strength;
    pixel = vec4(color.rgb * alpha, alpha);
}
