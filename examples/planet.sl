/*
 * A planet seen from orbit: continents that rise out of an ocean, deserts around the equator, ice
 * at the poles, clouds with storms, the lights of towns on the night side, and air over it all.
 *
 * The shader works on the unit sphere in its own space. Land, sea and clouds are functions, some of
 * which return several values.
 */
#include "include/shading.h"

#define LATITUDE(p) abs(ycomp(p))

/* Height of the ground above the sea, from -1 to 1, and its roughness. */
float elevation(point p; uniform float octaves; output float rough)
{
    float height = 0;
    uniform float amplitude = 1;
    uniform float i;
    point q = p;

    rough = 0;
    for (i = 0; i < octaves; i += 1) {
        float layer = SNOISE(q);

        /* Detail grows on high ground only, so that the coasts stay smooth. */
        height += amplitude * layer * clamp(1 + height, 0.2, 1);
        rough += amplitude * abs(layer);
        q = 2.1 * q + vector(13, 7, 5);
        amplitude *= 0.5;
    }
    return clamp(height, -1, 1);
}

/* Ground by height above the sea (0 to 1) and latitude (0 to 1). */
color land(float height; float latitude; uniform color heights[]; color desert; color ice;
           uniform float iceline)
{
    float dry = PULSE(0.2, 0.45, 0.1, latitude) * (1 - smoothstep(0.1, 0.4, height));
    color ground = mix(spline("linear", height, heights), desert, dry);

    /* High ground is as cold as ground nearer to the pole. */
    return mix(ground, ice, smoothstep(iceline, iceline + 0.1, latitude + 0.5 * height));
}

/* Rotates a point around an axis, by an angle that decreases from the middle of a storm. */
point stir(point p; point eye; uniform float strength; uniform float size)
{
    float near = clamp(1 - distance(p, eye) / size, 0, 1);

    return rotate(p, strength * near * near, point(0, 0, 0), eye);
}

/*
 * Density and thickness of the clouds. A storm rotates the air around its eye; only the first storm
 * that contains a point has an effect.
 */
void clouds(point p; uniform float coverage; uniform float storms; output float density;
            output float thick)
{
    point q = p;
    uniform float i;

    for (i = 0; i < storms; i += 1) {
        point eye = normalize(vector cellnoise(i, 7) - vector(0.5, 0.5, 0.5));

        if (distance(p, eye) > 0.3)
            continue;
        q = stir(q, eye, 4, 0.3);
        break;
    }
    thick = 0.5 + 0.5 * fractalsum(q * 3, 5, 2, 0.5);
    density = smoothstep(1 - coverage, 1.2 - coverage, thick);
}

/* Bright dots where people live: in the lowlands near water, away from the ice; 0 elsewhere. */
float towns(point p; float height; float latitude)
{
    uniform float size;
    float lights = 0;

    if (height > 0 && height <= 0.3 && latitude <= 0.8) {
        for (size = 30; size <= 120; size *= 2) {
            point q = p * size;
            point at = q - vector(floor(xcomp(q)), floor(ycomp(q)), floor(zcomp(q)));
            float off = distance(at, point(0.5, 0.5, 0.5));

            lights += step(0.9, cellnoise(q)) * (1 - smoothstep(0.1, 0.4, off));
        }
        return min(lights, 1);
    }
}

surface planet(float Ka = 0.02; float Kd = 1; float Ks = 0.6; float roughness = 0.08;
               uniform float octaves = 8; uniform float sealevel = 0; uniform float coverage = 0.5;
               uniform float storms = 3; uniform float iceline = 0.85; float airwidth = 3;
               color shallow = color(0.1, 0.4, 0.5); color deep = color(0.02, 0.08, 0.2);
               uniform color heights[4] = {color(0.25, 0.35, 0.1), color(0.15, 0.3, 0.08),
                                           color(0.4, 0.35, 0.3), color(0.9, 0.9, 0.9)};
               color desert = color(0.7, 0.55, 0.35); color ice = color(0.95, 0.97, 1);
               color air = color(0.35, 0.55, 1); color townlight = color(1, 0.8, 0.4);
               output varying float height = 0; output varying float cloudiness = 0)
{
    point Psphere = point normalize(vector transform("shader", P));
    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);
    float rough = 0;
    float thick = 0;
    float gloss = 0;
    color ground = 0;

    float latitude = LATITUDE(Psphere);

    height = elevation(Psphere * 1.5, octaves, rough) - sealevel;
    if (height > 0)
        ground = land(height, latitude, heights, desert, ice, iceline) * (1 - 0.2 * rough);
    else {
        /* The sea freezes later than the land. */
        float frozen = smoothstep(iceline + 0.05, iceline + 0.1, latitude);

        ground = mix(mix(shallow, deep, smoothstep(0, 0.4, -height)), ice, frozen);
        gloss = 1 - frozen;
    }

    clouds(Psphere, coverage, storms, cloudiness, thick);

    /* The lit side and the night side. Towns shine through thin clouds. */
    color day = diffuse(Nf);
    color glint = gloss * (1 - cloudiness) * Ks * specular(Nf, V, roughness);
    float night = 1 - smoothstep(0, 0.2, BRIGHTNESS(day));
    color glow = night * (1 - cloudiness) * towns(Psphere, height, latitude) * townlight;
    color cover = mix(ground, color(1, 1, 1) * (0.7 + 0.3 * thick), cloudiness);

    /* At grazing angles there is more air in between. */
    float haze = pow(1 - abs(Nf . V), airwidth);

    Oi = 1;
    Ci = mix(cover * (Ka * ambient() + Kd * day) + glint + glow, air * day, haze);
}
