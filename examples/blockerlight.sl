/*
 * A studio lamp with bars: rods between the lamp and the set block light, each with a soft edge,
 * and a colored glass filters it. The parts of the light that pass each of them are multiplied.
 */
light blockerlight(float intensity = 1; color filtercolor = color(1, 0.9, 0.7);
                   point from = point "shader" (0, 0, 0); uniform float rods = 3;
                   uniform float spacing = 0.2; uniform float thickness = 0.05;
                   uniform float edge = 0.05; uniform float away = 1; uniform float nearest = 0.5;
                   output varying float passed = 1)
{
    point Plocal = transform("shader", Ps);
    point Plamp = transform("shader", from);
    uniform float i;

    passed = 1;
    illuminate (from) {
        /* The point where the ray to the lamp meets the plane of the rods. */
        float along = (away - zcomp(Plamp)) / (zcomp(Plocal) - zcomp(Plamp));

        if (along > 0 && along < 1) {
            point hit = mix(Plamp, Plocal, along);

            for (i = 0; i < rods; i += 1) {
                uniform float x = (i - (rods - 1) / 2) * spacing;
                float off = ptlined(point(x, -10, away), point(x, 10, away), hit);

                passed *= smoothstep(thickness, thickness + edge, off);
            }
        }
        if (length(L) < nearest)
            Cl = 0;
        else
            Cl = passed * intensity * filtercolor / (L . L);
    }
}
