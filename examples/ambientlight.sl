/* Light from everywhere. */
light ambientlight(float intensity = 1; color lightcolor = 1)
{
    Cl = intensity * lightcolor;
}
