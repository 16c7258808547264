/* A small lamp: weaker with the square of the distance, colored by objects in its way. */
light lamp(float intensity = 10; color lightcolor = 1; point from = point "shader" (0, 0, 0))
{
    illuminate (from)
        Cl = intensity * lightcolor * transmission(Ps, from) / max(L . L, 0.001);
}
