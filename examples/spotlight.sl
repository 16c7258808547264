/* A lamp with a shade: full light in the middle of the cone, none outside, soft in between. */
light spotlight(float intensity = 1; color lightcolor = 1; point from = point "shader" (0, 0, 0);
                point to = point "shader" (0, 0, 1); uniform float coneangle = 0.5;
                uniform float penumbra = 0.1; float beam = 2)
{
    uniform vector axis = normalize(to - from);

    illuminate (from, axis, coneangle) {
        float across = axis . normalize(L);
        float spread = pow(across, beam) / (L . L);

        Cl = intensity * lightcolor * spread *
             smoothstep(cos(coneangle), cos(coneangle - penumbra), across);
    }
}
