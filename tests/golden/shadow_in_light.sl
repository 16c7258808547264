/* Shadows in a light shader, also of area light sources. */
light shadow_in_light(vector axis = vector(0, 0, 1))
{
    solar (axis, 0)
        Cl = color shadow("a.shd", Ps) * float shadow("a.shd", Ps, "source", P, P, P);
}
