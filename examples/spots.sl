/*
 * Spots that do not touch, as on a ladybird or a toadstool: positions are tried one after the
 * other, and those that are too close to an existing spot are skipped.
 */
#define MOST 20

surface spots(float Ka = 0.5; float Kd = 0.7; float Ks = 0.5; float roughness = 0.1;
              uniform float tries = 20; float radius = 0.08; float margin = 0.03;
              float soft = 0.01; color ground = color(0.8, 0.1, 0.05);
              color spot = color(0.05, 0.05, 0.05))
{
    uniform float placeS[MOST];
    uniform float placeT[MOST];
    uniform float taken[MOST];
    uniform float i, j;
    float inside = 0;

    for (i = 0; i < MOST; i += 1) {
        placeS[i] = cellnoise(i, 0.5);
        placeT[i] = cellnoise(i, 1.5);
        taken[i] = 0;
    }
    for (i = 0; i < min(tries, MOST); i += 1) {
        for (j = 0; j < i; j += 1) {
            uniform float ds = placeS[i] - placeS[j];
            uniform float dt = placeT[i] - placeT[j];

            if (taken[j] == 1 && sqrt(ds * ds + dt * dt) < 2 * radius + margin)
                continue 2;
        }
        taken[i] = 1;

        float os = s - placeS[i];
        float ot = t - placeT[i];

        inside = max(inside, 1 - smoothstep(radius - soft, radius + soft, sqrt(os * os + ot * ot)));
    }

    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);

    Oi = Os;
    Ci = Os * (mix(ground, spot, inside) * (Ka * ambient() + Kd * diffuse(Nf)) +
               Ks * specular(Nf, V, roughness));
}
