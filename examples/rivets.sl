/* Plates with a row of rivets along each joint; a surface can query the height of a point. */
displacement rivets(float Km = 0.02; float plates = 4; float perplate = 6; float size = 0.3;
                    output varying float raised = 0)
{
    float ss = mod(s * plates, 1);
    float tt = mod(t * plates * perplate, 1);
    float ds = (ss - 0.1) * perplate;
    float dt = tt - 0.5;
    float square = (ds * ds + dt * dt) / (size * size);

    /* A round head, and a groove between the plates. */
    if (square < 1)
        raised = sqrt(1 - square);
    else
        raised = -smoothstep(0.98, 1, ss);

    P += Km * raised * normalize(N);
    N = calculatenormal(P);
}
