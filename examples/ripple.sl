/* Rings around a center, as from a stone in a pond; they fade with distance. */
displacement ripple(float Km = 0.05; float rings = 12; float fade = 2;
                    uniform float center[2] = {0.5, 0.5})
{
    float ds = s - center[0];
    float dt = t - center[1];
    float distance = sqrt(ds * ds + dt * dt);
    float height = Km * cos(distance * rings * 2 * PI) * exp(-fade * distance);

    P += height * normalize(N);
    N = calculatenormal(P);
}
