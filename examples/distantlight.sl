/* Sunlight: parallel rays, with shadows from a map if there is one. */
light distantlight(float intensity = 1; color lightcolor = 1;
                   vector to = vector "shader" (0, 0, 1); string shadowmap = "";
                   float bias = 0.01; uniform float samples = 16)
{
    solar (to, 0) {
        Cl = intensity * lightcolor;
        if (shadowmap != "")
            Cl *= 1 - float shadow(shadowmap, Ps, "bias", bias, "samples", samples);
    }
}
