/* Uses most queries of the scene, and has parameters of most kinds. */
surface mirror(float Kd = 0.5; varying color tint = 1; string name = "plain"; matrix frame = 2;
               point place = point "shader" (1, 2, 3); varying float pair[2] = {1, 2};
               varying float late = noise(u);
               output float sum = 0; output varying color lit = 0; output string told = "")
{
    uniform float i = 0;
    varying float d = 0;
    varying string own = format("%f", u);
    color seen = trace(P, N, d) + texture("a", s, t) + environment("b", N);
    illuminance (P, N, PI) {
        lightsource("power", i);
        sum += i;
        lightsource("each", d);
        lit += Cl * d;
    }
    displacement("Km", i);
    attribute("tag", i);
    textureinfo("a", "kind", told);
    told = concat(name, told);
    while (d > 0.1) d *= 0.5;
    Ci = tint * (seen + lit + ambient() + diffuse(N)) * pair[1] * late + transmission(P, place);
    Oi = comp(frame, 0, 0) * occlusion(P, N, 4) + Du(Ci);
    if (own != format("%f", u)) Oi = 0;
}
