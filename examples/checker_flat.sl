/*
 * Two colors in squares over the surface's parameters, with soft edges.
 *
 * Each direction has a wave that is 0 in even rows and 1 in odd ones; a square is colored where
 * the two waves differ.
 */
#define WAVE(x) (smoothstep(0, blur, mod(x, 2)) - smoothstep(1, 1 + blur, mod(x, 2)))

surface checker_flat(float Kd = 0.8; float Ka = 0.2; float frequency = 8; float blur = 0.03;
                     color lightcolor = color(0.9, 0.85, 0.7);
                     color darkcolor = color "hsv"(0.07, 0.6, 0.25))
{
    float alongS = WAVE(s * frequency);
    float alongT = WAVE(t * frequency);
    float differ = alongS + alongT - 2 * alongS * alongT;

    normal Nf = faceforward(normalize(N), I);
    color squares = mix(lightcolor, darkcolor, differ);

    Oi = Os;
    Ci = Os * squares * (Ka * ambient() + Kd * diffuse(Nf));
}
