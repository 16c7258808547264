/* Light from far away along the z axis of its space, colored by objects in its way. */
light sun(float intensity = 1; color lightcolor = 1; vector to = vector "shader" (0, 0, 1))
{
    solar (to, 0)
        Cl = intensity * lightcolor * transmission(Ps, Ps - 1000 * to);
}
