/* Only a glow along the silhouette: for halos, ghosts and atmospheres. */
surface rim(float strength = 1; float width = 3; color glow = color(0.4, 0.7, 1))
{
    float edge = pow(1 - abs(normalize(N) . normalize(I)), width);

    Oi = Os * edge;
    Ci = strength * glow * Oi;
}
