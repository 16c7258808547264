/* Raises the land above the sea level. */
displacement mountains(string map = ""; float sealevel = 0.5; float height = 0.4)
{
    float up = max(float texture(map, s, t) - sealevel, 0);

    P += height * up * normalize(N);
    N = calculatenormal(P);
}
