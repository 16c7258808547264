// Loops over lights and the lighting functions, inside and outside of conditions.
surface lighting(float angle = 1.2; float rough = 0.1;)
{
    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);
    color sum = 0;
    illuminance(P) { sum += Cl; }
    illuminance(P, Nf, PI / 2) { sum += Cl * (normalize(L) . Nf); }
    illuminance(P, N, s) { sum += Ol; }
    uniform vector up = vector(0, 0, 1);
    illuminance(P + Nf, up, angle) { sum += Cl * 2; }
    if (u > 0.5) {
        illuminance(P, Nf, angle) { if (v > 0.5) sum += Cl; }
        sum += diffuse(Nf) + specular(Nf, V, rough);
        P += Nf;
        illuminance(P, V, 1) { sum -= Cl; }
    } else {
        sum += ambient() + phong(Nf, V, 20) + specularstd(Nf, V, s);
    }
    if (angle > 1)
        sum += specular(Nf, V, rough);
    Ci = sum + ambient() + diffuse(Nf) + specularbrdf(V, Nf, V, rough);
}
