/* Macros and functions that several shaders of this folder use. */
#ifndef SHADING_H
#define SHADING_H

#define BLACK color(0, 0, 0)
#define WHITE color(1, 1, 1)
#define BRIGHTNESS(c) (0.299 * comp(c, 0) + 0.587 * comp(c, 1) + 0.114 * comp(c, 2))

/* Noise from -1 to 1. */
#define SNOISE(x) (2 * float noise(x) - 1)

/* 1 between two edges, 0 outside, with slopes of the width `fuzz` around them. */
#define PULSE(low, high, fuzz, x) \
    (smoothstep((low) - (fuzz), (low) + (fuzz), x) - \
     smoothstep((high) - (fuzz), (high) + (fuzz), x))

/* Noise in octaves, each finer than the previous one; the mean is 0. */
float fractalsum(point p; uniform float octaves; uniform float lacunarity; uniform float gain)
{
    float sum = 0;
    uniform float amplitude = 1;
    uniform float frequency = 1;
    uniform float i;

    for (i = 0; i < octaves; i += 1) {
        sum += amplitude * SNOISE(p * frequency);
        amplitude *= gain;
        frequency *= lacunarity;
    }
    return sum;
}

/* The same with absolute values, which has creases where the noise changes its sign. */
float turbulence(point p; uniform float octaves; uniform float lacunarity; uniform float gain)
{
    float sum = 0;
    uniform float amplitude = 1;
    uniform float frequency = 1;
    uniform float i;

    for (i = 0; i < octaves; i += 1) {
        sum += amplitude * abs(SNOISE(p * frequency));
        amplitude *= gain;
        frequency *= lacunarity;
    }
    return sum;
}

#endif
