in vec4 atColor;
in vec2 here;
flat in vec2 end;

uniform float dash; // pixels; 0: none

out vec4 pixel;

void main() {
    if (dash > 0.0 && mod(distance(here, end), 2.0 * dash) > dash)
        discard;
    pixel = vec4(atColor.rgb * atColor.a, atColor.a);
}
